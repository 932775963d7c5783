#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KrCore::Testing {

/// A second engine for the dialect of `RegExp`, as plain as it can be: the rules one by one,
/// recursion for depth and whole copies for whatever has to be put back. It shares no code with
/// the library but the case mappings, so where both agree, both follow the rules.
class ReferenceMatcher {
public:
    struct Slot {
        int start = -1;
        int end = 0;
    };
    enum class Outcome { Match, NoMatch, TooManySteps };

    ReferenceMatcher(const std::u16string& pattern, int flags);
    ~ReferenceMatcher();

    bool good() const { return isGood_; }
    int captureLength() const { return isGood_ ? groupCount_ + 1 : 0; }
    /// Gives up after so many nodes were matched, and is of no more use then.
    Outcome match(const std::u16string& subject, int start, int mostSteps);
    const std::vector<Slot>& slots() const { return slots_; }

private:
    struct Node;
    using Chain = std::vector<std::unique_ptr<Node>>;
    struct Token;
    struct TooManySteps {};

    // reading
    bool atEnd() const { return index_ >= pattern_.size() || failed_; }
    int peek(std::size_t ahead = 0) const;
    bool fail();
    int readNumber();
    Token read(bool inBrackets);
    Token readEscape(bool inBrackets);
    Token readOctal(int most);
    Token readRadix(int letter, int digits, int radix);
    Chain readSequence(bool isAlternative);
    void addNode(Chain& chain, const Token& token);
    void addRun(Chain& chain, const Token& first);
    void addQuantifier(Chain& chain, int minimum, int maximum);
    void addBrace(Chain& chain);
    void addGroup(Chain& chain);
    void addAlternation(Chain& chain);
    void addSet(Chain& chain);
    void addSetItem(Node& set, const Token& token);

    // matching
    bool walk(const Chain& chain, std::size_t index);
    bool walkRest(const Chain& chain, std::size_t index);
    bool matchAll(const Chain& chain);
    bool match(Node& node);
    bool matchText(const std::u16string& text);
    bool matchSet(const Node& set);
    bool matchBoundary(bool negated) const;
    bool matchGroup(Node& group);
    bool matchRepeat(Node& repeat);
    bool matchChoice(Node& choice);
    bool backtrack(Node& node);
    bool backtrackAll(const Chain& chain);
    bool backtrackRepeat(Node& repeat);
    bool backtrackChoice(Node& choice);
    void reset(Node& node);
    void rearm(Node& node, std::vector<Node*>& marked);
    void clearCaptures(int first);
    void clearCapturesFrom(const Chain& chain);
    char16_t unit() const { return subject_[std::size_t(position_)]; }
    bool isLineBreakAt(int position) const;
    bool isWordAt(int position) const;
    bool isSame(char16_t a, char16_t b) const;

    const std::u16string pattern_;
    const int flags_;
    std::size_t index_ = 0;
    bool failed_ = false;
    int groupCount_ = 0;
    int highestReference_ = 0;
    Chain root_;
    bool isGood_ = false;

    std::u16string subject_;
    int position_ = 0;
    int stepsLeft_ = 0;
    std::vector<Slot> slots_;
};

} // namespace KrCore::Testing
