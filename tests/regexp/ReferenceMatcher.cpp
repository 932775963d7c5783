#include "ReferenceMatcher.h"

#include <krcore/text/UnicodeUtils.h>

#include <algorithm>
#include <limits>
#include <string_view>

namespace KrCore::Testing {

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

bool isIn(int unit, std::u16string_view list) {
    return unit >= 0 && list.find(static_cast<char16_t>(unit)) != std::u16string_view::npos;
}

int digitOf(int unit) {
    if (unit >= '0' && unit <= '9') return unit - '0';
    if (unit >= 'a' && unit <= 'f') return unit - 'a' + 10;
    if (unit >= 'A' && unit <= 'F') return unit - 'A' + 10;
    return 99;
}

bool isInClass(int letter, int unit) {
    switch (letter) {
    case 'd':
        return unit >= '0' && unit <= '9';
    case 's':
        return (unit >= 0x08 && unit <= 0x0D) || (unit >= 0x2000 && unit <= 0x200A) ||
               isIn(unit, u"\u0020\u00A0\u1680\u180E\u2028\u2029\u202F\u205F\u3000");
    case 'w':
        return isIn(unit, u"_0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    default:
        return !isInClass(letter - 'A' + 'a', unit);
    }
}

} // namespace

/// A unit of the pattern, or what an escape stands for.
struct ReferenceMatcher::Token {
    enum Kind { Unit, Special, Class, Reference } kind;
    int value;

    bool is(char special) const { return kind == Special && value == special; }
    /// Gathered into one literal.
    bool isOrdinary() const { return kind == Unit; }
};

struct ReferenceMatcher::Node {
    enum Kind { Bol, Eol, Dots, Text, Reference, Repeat, Choice, Group, Set, Boundary } kind;
    bool backtrackable = false;
    std::vector<Chain> chains; // one of a group or a repetition, any number of a choice

    int number = 0; // how many dots, or which group
    bool negated = false;
    std::u16string text;
    std::vector<std::pair<int, int>> ranges;
    std::u16string classes;
    enum GroupKind { Capturing, Plain, LookAhead, NegativeLookAhead } groupKind = Plain;
    int minimum = 0;
    int maximum = 0;
    bool lazy = false;

    // What was chosen.
    int target = 0;
    int highest = 0;
    bool exhausted = false;
    bool emptied = false; // a repetition matched nothing since the last reset
    int current = 0;
    bool marked = false;

    explicit Node(Kind k) : kind(k) {}
    void take(Chain chain) {
        for (const auto& child : chain)
            backtrackable = backtrackable || child->backtrackable;
        chains.push_back(std::move(chain));
    }
};

ReferenceMatcher::ReferenceMatcher(const std::u16string& pattern, int flags)
    : pattern_(pattern), flags_(flags) {
    root_ = readSequence(false);
    isGood_ = !failed_ && highestReference_ <= groupCount_;
}

ReferenceMatcher::~ReferenceMatcher() = default;

// ---- reading

int ReferenceMatcher::peek(std::size_t ahead) const {
    return index_ + ahead < pattern_.size() ? pattern_[index_ + ahead] : -1;
}

bool ReferenceMatcher::fail() {
    failed_ = true;
    return false;
}

int ReferenceMatcher::readNumber() {
    if (digitOf(peek()) > 9) return -1;
    std::int64_t number = 0;
    for (; digitOf(peek()) <= 9; ++index_)
        number = std::min<std::int64_t>(number * 10 + digitOf(peek()), unlimited);
    return static_cast<int>(number);
}

ReferenceMatcher::Token ReferenceMatcher::read(bool inBrackets) {
    const int unit = pattern_[index_++];
    if (unit == '\\') return readEscape(inBrackets);
    return {isIn(unit, u"|()[]{^$*+?.") ? Token::Special : Token::Unit, unit};
}

ReferenceMatcher::Token ReferenceMatcher::readEscape(bool inBrackets) {
    if (peek() < 0) return fail(), Token{Token::Unit, ' '};
    const int unit = pattern_[index_++];
    if (unit >= '1' && unit <= '9') {
        const std::size_t first = --index_;
        if (inBrackets) return readOctal(3);
        const int group = readNumber();
        if (group > groupCount_ && index_ - first > 1) return index_ = first, readOctal(3);
        highestReference_ = std::max(highestReference_, group);
        return {Token::Reference, group};
    }
    if (unit == '0') {
        if (digitOf(peek()) > 7 || digitOf(peek(1)) > 7) return {Token::Unit, 0};
        return readOctal(2);
    }
    if (unit == 'o') return readRadix('o', 3, 8);
    if (unit == 'x') return readRadix('x', 2, 16);
    if (unit == 'u') return readRadix('u', 4, 16);
    if (unit == 'b' && inBrackets) return {Token::Class, 'b'};
    if (unit == 'B' && inBrackets) fail();
    if (isIn(unit, u"bBdDsSwW")) return {Token::Class, unit};
    if (unit == 'c') {
        const int letter = peek();
        const bool isUpper = letter >= 'A' && letter <= 'Z';
        if (!isUpper && (letter < 'a' || letter > 'z')) return fail(), Token{Token::Unit, ' '};
        ++index_;
        return {Token::Unit, letter - (isUpper ? 64 : 96)};
    }
    const std::size_t control = std::u16string_view(u"fnrtv").find(static_cast<char16_t>(unit));
    if (control != std::u16string_view::npos) return {Token::Unit, "\f\n\r\t\v"[control]};
    return {Token::Unit, unit};
}

ReferenceMatcher::Token ReferenceMatcher::readOctal(int most) {
    if (digitOf(peek()) > 7) return {Token::Unit, pattern_[index_++]}; // 8 and 9 are themselves
    int value = 0;
    for (; most > 0 && digitOf(peek()) <= 7; --most)
        value = value * 8 + digitOf(pattern_[index_++]);
    return {Token::Unit, value};
}

ReferenceMatcher::Token ReferenceMatcher::readRadix(int letter, int digits, int radix) {
    const std::size_t first = index_;
    int value = 0;
    for (; digits > 0 && digitOf(peek()) < radix; --digits)
        value = value * radix + digitOf(pattern_[index_++]);
    if (digits == 0) return {Token::Unit, value};
    index_ = first;
    return {Token::Unit, letter};
}

ReferenceMatcher::Chain ReferenceMatcher::readSequence(bool isAlternative) {
    Chain chain;
    while (!atEnd()) {
        const std::size_t before = index_;
        const Token token = read(false);
        if (isAlternative && (token.is('|') || token.is(')'))) {
            index_ = before;
            break;
        }
        addNode(chain, token);
    }
    return chain;
}

void ReferenceMatcher::addNode(Chain& chain, const Token& token) {
    const auto add = [&chain](Node::Kind kind) -> Node& {
        return *chain.emplace_back(std::make_unique<Node>(kind));
    };
    if (token.kind == Token::Reference) {
        add(Node::Reference).number = token.value;
    } else if (token.kind == Token::Class && isIn(token.value, u"bB")) {
        add(Node::Boundary).negated = token.value == 'B';
    } else if (token.kind == Token::Class) {
        add(Node::Set).classes = static_cast<char16_t>(token.value);
    } else if (token.is('^')) {
        add(Node::Bol);
    } else if (token.is('$')) {
        add(Node::Eol);
    } else if (token.is('.')) {
        Node& dots = add(Node::Dots);
        for (dots.number = 1; peek() == '.'; ++index_)
            ++dots.number;
    } else if (token.is('[')) {
        addSet(chain);
    } else if (token.is('(')) {
        addGroup(chain);
    } else if (token.is('|')) {
        addAlternation(chain);
    } else if (token.is('*')) {
        addQuantifier(chain, 0, unlimited);
    } else if (token.is('+')) {
        addQuantifier(chain, 1, unlimited);
    } else if (token.is('?')) {
        addQuantifier(chain, 0, 1);
    } else if (token.is('{')) {
        addBrace(chain);
    } else {
        addRun(chain, token); // closers too
    }
}

void ReferenceMatcher::addRun(Chain& chain, const Token& first) {
    std::u16string run(1, static_cast<char16_t>(first.value));
    bool isQuantified = false;
    while (!atEnd()) {
        const std::size_t before = index_;
        const Token token = read(false);
        if (!token.isOrdinary()) {
            index_ = before;
            isQuantified = token.is('{') || token.is('+') || token.is('*') || token.is('?');
            break;
        }
        run += static_cast<char16_t>(token.value);
    }
    if (isQuantified && run.size() > 1) {
        chain.emplace_back(std::make_unique<Node>(Node::Text))->text =
            run.substr(0, run.size() - 1);
        run = run.back();
    }
    chain.emplace_back(std::make_unique<Node>(Node::Text))->text = run;
}

void ReferenceMatcher::addQuantifier(Chain& chain, int minimum, int maximum) {
    if (chain.empty()) return static_cast<void>(fail());
    auto repeat = std::make_unique<Node>(Node::Repeat);
    repeat->minimum = minimum;
    repeat->maximum = maximum;
    if (peek() == '?') {
        repeat->lazy = true;
        ++index_;
    }
    if (isIn(peek(), u"*+?")) return static_cast<void>(fail());
    Chain child;
    child.push_back(std::move(chain.back()));
    repeat->take(std::move(child));
    repeat->backtrackable = repeat->backtrackable || minimum < maximum;
    chain.back() = std::move(repeat);
}

void ReferenceMatcher::addBrace(Chain& chain) {
    const std::size_t start = index_ - 1;
    const int minimum = readNumber();
    int maximum = minimum;
    if (minimum >= 0 && peek() == ',') {
        ++index_;
        maximum = readNumber();
        if (maximum < 0) maximum = unlimited;
        if (maximum < minimum) maximum = minimum;
    }
    if (minimum >= 0 && peek() == '}') {
        ++index_;
        return addQuantifier(chain, minimum, maximum);
    }
    chain.emplace_back(std::make_unique<Node>(Node::Text))->text =
        pattern_.substr(start, index_ - start);
}

void ReferenceMatcher::addGroup(Chain& chain) {
    auto group = std::make_unique<Node>(Node::Group);
    const int mark = peek() == '?' ? peek(1) : -1;
    if (mark == ':') group->groupKind = Node::Plain;
    if (mark == '=') group->groupKind = Node::LookAhead;
    if (mark == '!') group->groupKind = Node::NegativeLookAhead;
    Chain body;
    if (isIn(mark, u":=!")) {
        index_ += 2;
    } else {
        group->groupKind = Node::Capturing;
        if (peek() != '?') {
            ++groupCount_;
        } else {
            body.emplace_back(std::make_unique<Node>(Node::Text))->text = u"?";
            ++index_;
            addQuantifier(body, 0, 1);
        }
    }
    group->number = groupCount_;
    // The body goes on after the optional "?", if there was one.
    while (!atEnd() && peek() != ')')
        addNode(body, read(false));
    if (peek() != ')' || failed_) return static_cast<void>(fail());
    ++index_;
    group->take(std::move(body));
    chain.push_back(std::move(group));
}

void ReferenceMatcher::addAlternation(Chain& chain) {
    auto choice = std::make_unique<Node>(Node::Choice);
    const auto take = [&choice](Chain alternative) {
        if (alternative.empty()) alternative.push_back(std::make_unique<Node>(Node::Text));
        choice->take(std::move(alternative));
    };
    take(std::exchange(chain, {}));
    do {
        take(readSequence(true));
    } while (peek() == '|' && !failed_ && ++index_);
    choice->backtrackable = true;
    chain.push_back(std::move(choice));
}

void ReferenceMatcher::addSet(Chain& chain) {
    Node& set = *chain.emplace_back(std::make_unique<Node>(Node::Set));
    if (peek() == '^') {
        set.negated = true;
        ++index_;
    }
    while (!atEnd()) {
        const Token token = read(true);
        if (token.is(']')) return;
        addSetItem(set, token);
    }
    fail();
}

void ReferenceMatcher::addSetItem(Node& set, const Token& token) {
    const auto add = [&set](int first, int last) { set.ranges.emplace_back(first, last); };
    if (token.kind == Token::Class && token.value == 'b') return add('\b', '\b');
    if (token.kind == Token::Class) {
        set.classes += static_cast<char16_t>(token.value);
        return;
    }
    if (peek() != '-') return add(token.value, token.value);
    ++index_;
    if (atEnd()) return static_cast<void>(fail());
    if (peek() != ']') {
        const Token last = read(true);
        const bool isBackspace = last.kind == Token::Class && last.value == 'b';
        if (last.kind != Token::Class || isBackspace) {
            const int end = isBackspace ? '\b' : last.value;
            if (end < token.value) fail();
            return add(token.value, end);
        }
        set.classes += static_cast<char16_t>(last.value);
    }
    add(token.value, token.value);
    add('-', '-');
}

// ---- matching

ReferenceMatcher::Outcome ReferenceMatcher::match(const std::u16string& subject, int start,
                                                  int mostSteps) {
    subject_ = subject;
    stepsLeft_ = mostSteps;
    slots_.assign(std::size_t(captureLength()), {});
    const int length = static_cast<int>(subject.size());
    if (!isGood_ || start < 0 || (length > 0 && start >= length)) return Outcome::NoMatch;
    for (const auto& node : root_)
        reset(*node);
    try {
        for (int begin = start; begin <= length; ++begin) {
            position_ = begin;
            if (!root_.empty() && !walk(root_, 0)) continue;
            slots_[0] = {begin, position_};
            return Outcome::Match;
        }
    } catch (const TooManySteps&) {
        return Outcome::TooManySteps;
    }
    clearCaptures(0);
    return Outcome::NoMatch;
}

bool ReferenceMatcher::walk(const Chain& chain, std::size_t index) {
    while (!chain[index]->backtrackable) {
        if (!match(*chain[index])) return false;
        if (++index == chain.size()) return true;
    }
    Node& node = *chain[index];
    const int saved = position_;
    do {
        position_ = saved;
        if (match(node) && walkRest(chain, index + 1)) return true;
    } while (backtrack(node));
    reset(node);
    return false;
}

bool ReferenceMatcher::walkRest(const Chain& chain, std::size_t index) {
    for (; index < chain.size(); ++index) {
        if (chain[index]->backtrackable) return walk(chain, index);
        if (!match(*chain[index])) return false;
    }
    return true;
}

bool ReferenceMatcher::matchAll(const Chain& chain) {
    return std::all_of(chain.begin(), chain.end(), [this](auto& node) { return match(*node); });
}

bool ReferenceMatcher::match(Node& node) {
    if (--stepsLeft_ < 0) throw TooManySteps();
    const bool isMultiLine = (flags_ & 4) != 0;
    const int length = static_cast<int>(subject_.size());
    switch (node.kind) {
    case Node::Bol:
        return position_ == 0 || (isMultiLine && isLineBreakAt(position_ - 1));
    case Node::Eol:
        return position_ >= length || (isMultiLine && isLineBreakAt(position_));
    case Node::Dots:
        for (int i = 0; i < node.number; ++i, ++position_) {
            if (position_ >= length || unit() == u'\n') return false;
        }
        return true;
    case Node::Text:
        return matchText(node.text);
    case Node::Reference: {
        if (node.number >= captureLength()) return false;
        const Slot slot = slots_[std::size_t(node.number)];
        if (slot.start < 0) return true;
        return matchText(
            subject_.substr(std::size_t(slot.start), std::size_t(slot.end - slot.start)));
    }
    case Node::Repeat:
        return matchRepeat(node);
    case Node::Choice:
        return matchChoice(node);
    case Node::Group:
        return matchGroup(node);
    case Node::Set:
        return matchSet(node);
    case Node::Boundary:
        return matchBoundary(node.negated);
    }
    return false;
}

bool ReferenceMatcher::matchText(const std::u16string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t at = std::size_t(position_) + i;
        if (at >= subject_.size() || !isSame(text[i], subject_[at])) return false;
    }
    position_ += static_cast<int>(text.size());
    return true;
}

bool ReferenceMatcher::matchSet(const Node& set) {
    if (position_ >= static_cast<int>(subject_.size())) return false;
    const auto holds = [&set](int unit) {
        return std::any_of(
                   set.ranges.begin(), set.ranges.end(),
                   [unit](auto range) { return unit >= range.first && unit <= range.second; }) ||
               std::any_of(set.classes.begin(), set.classes.end(),
                           [unit](char16_t letter) { return isInClass(letter, unit); });
    };
    const bool isMember = (flags_ & 2) != 0 ? holds(UnicodeUtils::towupper(unit())) ||
                                                  holds(UnicodeUtils::towlower(unit()))
                                            : holds(unit());
    if (isMember == set.negated) return false;
    ++position_;
    return true;
}

bool ReferenceMatcher::matchBoundary(bool negated) const {
    if (position_ >= static_cast<int>(subject_.size())) return true;
    return (isWordAt(position_) != isWordAt(position_ - 1)) != negated;
}

bool ReferenceMatcher::matchGroup(Node& group) {
    const int start = position_;
    const bool matches = matchAll(group.chains[0]);
    if (group.groupKind == Node::Plain) return matches;
    if (group.groupKind == Node::Capturing) {
        if (matches) slots_[std::size_t(group.number)] = {start, position_};
        return matches;
    }
    if (!matches) clearCaptures(group.number + 1);
    position_ = start;
    return matches == (group.groupKind == Node::LookAhead);
}

bool ReferenceMatcher::matchRepeat(Node& repeat) {
    clearCapturesFrom(repeat.chains[0]);
    repeat.exhausted = false;
    std::vector<Slot> copy;
    std::vector<Node*> marked;
    int count = 0;
    while (count < repeat.target && position_ < static_cast<int>(subject_.size())) {
        const int start = position_;
        if (!matchAll(repeat.chains[0])) {
            if (!copy.empty()) slots_ = copy;
            position_ = start;
            break;
        }
        for (const auto& child : repeat.chains[0])
            rearm(*child, marked);
        ++count;
        if (position_ == start) {
            // Put back every time, a lazy one would ask for one more for ever.
            count = repeat.minimum;
            repeat.target = repeat.lazy && repeat.emptied ? repeat.maximum : repeat.minimum;
            repeat.emptied = true;
            repeat.exhausted = true;
            break;
        }
        copy = slots_;
    }
    for (Node* choice : marked)
        choice->marked = false;
    repeat.highest = std::max(repeat.highest, count);
    const bool matches = count >= repeat.minimum;
    if (repeat.lazy && count < repeat.target) repeat.target = repeat.maximum;
    return matches;
}

bool ReferenceMatcher::matchChoice(Node& choice) {
    const std::vector<Slot> copy = slots_;
    const int start = position_;
    const int count = static_cast<int>(choice.chains.size());
    int local = 0;
    int& current = choice.marked ? local : choice.current;
    if (current >= count) return true;
    for (; current < count; ++current) {
        const Chain& alternative = choice.chains[std::size_t(current)];
        position_ = start;
        if (matchAll(alternative)) return true;
        const bool hasChoices = std::any_of(alternative.begin(), alternative.end(),
                                            [](auto& node) { return node->backtrackable; });
        if (hasChoices) break;
    }
    position_ = start;
    slots_ = copy;
    return false;
}

bool ReferenceMatcher::backtrack(Node& node) {
    switch (node.kind) {
    case Node::Repeat:
        return backtrackRepeat(node);
    case Node::Choice:
        return backtrackChoice(node);
    case Node::Group:
        if (node.groupKind == Node::LookAhead || node.groupKind == Node::NegativeLookAhead)
            return false;
        if (node.groupKind == Node::Capturing) slots_[std::size_t(node.number)].start = -1;
        return backtrackAll(node.chains[0]);
    default:
        return false;
    }
}

bool ReferenceMatcher::backtrackAll(const Chain& chain) {
    for (auto node = chain.rbegin(); node != chain.rend(); ++node) {
        if (backtrack(**node)) return true;
        reset(**node);
    }
    return false;
}

bool ReferenceMatcher::backtrackRepeat(Node& repeat) {
    if (repeat.minimum >= repeat.maximum) return false;
    if (repeat.lazy) {
        const int most = std::min(repeat.maximum, static_cast<int>(subject_.size()));
        if (repeat.target < most) {
            ++repeat.target;
            return true;
        }
    } else if (repeat.target > repeat.minimum) {
        repeat.target = std::min(repeat.target, repeat.highest);
        if (repeat.target > repeat.minimum) --repeat.target;
        return true;
    }
    if (repeat.exhausted || !backtrackAll(repeat.chains[0])) return false;
    repeat.target = repeat.lazy ? repeat.minimum : repeat.maximum;
    return true;
}

bool ReferenceMatcher::backtrackChoice(Node& choice) {
    const std::size_t count = choice.chains.size();
    if (std::size_t(choice.current) >= count) return false;
    if (backtrackAll(choice.chains[std::size_t(choice.current)])) return true;
    return std::size_t(++choice.current) < count;
}

void ReferenceMatcher::reset(Node& node) {
    node.highest = 0;
    node.exhausted = false;
    node.emptied = false;
    node.target = node.lazy ? node.minimum : node.maximum;
    node.current = 0;
    for (const Chain& chain : node.chains) {
        for (const auto& child : chain)
            reset(*child);
    }
}

/// Marks the choices within, for the quantifier that notes them.
void ReferenceMatcher::rearm(Node& node, std::vector<Node*>& marked) {
    if (node.kind == Node::Choice && !node.marked) {
        node.marked = true;
        marked.push_back(&node);
    }
    for (const Chain& chain : node.chains) {
        for (const auto& child : chain)
            rearm(*child, marked);
    }
}

void ReferenceMatcher::clearCaptures(int first) {
    for (std::size_t slot = std::size_t(first); slot < slots_.size(); ++slot)
        slots_[slot].start = -1;
}

/// The first group of the chain clears.
void ReferenceMatcher::clearCapturesFrom(const Chain& chain) {
    for (const auto& node : chain) {
        if (node->kind != Node::Group) continue;
        const bool hasSlot = node->groupKind == Node::Capturing;
        return clearCaptures(hasSlot ? node->number : node->number + 1);
    }
}

bool ReferenceMatcher::isLineBreakAt(int position) const {
    return isIn(subject_[std::size_t(position)], u"\n\r\u2028\u2029");
}

bool ReferenceMatcher::isWordAt(int position) const {
    return position >= 0 && isInClass('w', subject_[std::size_t(position)]);
}

bool ReferenceMatcher::isSame(char16_t a, char16_t b) const {
    if ((flags_ & 2) == 0) return a == b;
    return UnicodeUtils::towupper(a) == UnicodeUtils::towupper(b);
}

} // namespace KrCore::Testing
