#pragma once

#include "regexp/Nodes.h"
#include "regexp/PatternReader.h"
#include "regexp/UnitRanges.h"

#include <krcore/containers/SimpleArray.h>

namespace KrCore {

/// Compiles one pattern. Open groups wait on a list, so the depth of the pattern takes no stack;
/// it is limited all the same, because matching takes some.
class RegExpParser {
public:
    RegExpParser(const String& pattern, bool ignoreCase);
    RegExpParser(const RegExpParser&) = delete;
    RegExpParser& operator=(const RegExpParser&) = delete;
    ~RegExpParser();

    /// The compiled pattern; null after a mistake. To be called once.
    OwnedChain parse();

    int groupCount() const { return groupCount_; }
    int alternationCount() const { return alternationCount_; }
    /// The initial targets of the quantifiers, by their index.
    const SimpleArray& targets() const { return targets_; }

    /// Groups within groups, and all nodes within nodes. A match takes up to some hundred bytes of
    /// stack for each.
    static constexpr int deepestGroup = 1000;
    static constexpr int deepestNode = 3 * deepestGroup;
    /// The depth times the captures, which a match may have to keep on each level.
    static constexpr int mostSavedSlots = 1 << 24;

private:
    /// The whole pattern or a group that is open: what has been read of it.
    struct Level;

    bool isWithinLimits(const reAtom* root) const;
    void addToken(const Token& token);
    void addSpecial(int unit);
    void addRun(int firstUnit);
    void addText(const String& text);
    void addDots();
    void addClassEscape(int letter);
    void addSet();
    void addSetItem(const Token& token);
    void addRange(int first);
    void addQuantifier(int minimum, int maximum, int index);
    void addCountedQuantifier();
    void openGroup();
    void closeGroup();
    void addAlternative();
    void endAlternatives();
    void append(reAtom* node);
    void appendContainer(reAtom* node, int firstQuantifier, int firstAlternation);

    PatternReader reader_;
    UnitRanges ranges_;
    SimpleArray targets_;
    bool ignoreCase_;
    int groupCount_ = 0;
    int alternationCount_ = 0;
    Level* level_; // owned, with those around it
};

} // namespace KrCore
