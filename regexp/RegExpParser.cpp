#include "regexp/RegExpParser.h"

#include "regexp/RegExpData.h"

#include <krcore/text/UnicodeUtils.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace KrCore {

struct RegExpParser::Level : public Root {
    Level(Level* around, int index, GroupKind kind, int quantifierCount, int alternations)
        : outer(around), depth(around ? around->depth + 1 : 0), groupIndex(index), groupKind(kind),
          firstQuantifier(quantifierCount), firstAlternation(alternations),
          lastQuantifier(quantifierCount), lastAlternation(alternations) {}

    Level* const outer;
    const int depth;
    const int groupIndex;
    const GroupKind groupKind;
    NodeChain chain;                             // the sequence that is being read
    std::unique_ptr<reAlternative> alternatives; // those before it, if there was a "|"
    const int firstQuantifier;                   // the records of the group start here
    const int firstAlternation;
    int lastQuantifier; // those of the last node in the chain start here
    int lastAlternation;
};

RegExpParser::RegExpParser(const String& pattern, bool ignoreCase)
    : reader_(pattern), ignoreCase_(ignoreCase),
      level_(new Level(nullptr, 0, GroupKind::Plain, 0, 0)) {}

RegExpParser::~RegExpParser() {
    while (level_)
        delete std::exchange(level_, level_->outer);
}

OwnedChain RegExpParser::parse() {
    for (Token token = reader_.read(0); token.kind != TokenKind::End;
         token = reader_.read(groupCount_))
        addToken(token);
    const bool isClosed = !level_->outer;
    if (reader_.hasFailed() || !isClosed || reader_.highestReference() > groupCount_)
        return nullptr;
    endAlternatives();
    if (level_->chain.isEmpty()) return OwnedChain(RegExpData::makeEmptyRoot());
    OwnedChain root(level_->chain.release());
    return isWithinLimits(root.get()) ? std::move(root) : nullptr;
}

bool RegExpParser::isWithinLimits(const reAtom* root) const {
    int height = 0;
    for (const reAtom* node = root; node; node = node->next)
        height = std::max(height, node->height());
    return height * (groupCount_ + 1LL) <= mostSavedSlots;
}

void RegExpParser::addToken(const Token& token) {
    switch (token.kind) {
    case TokenKind::Unit:
        return addRun(token.value);
    case TokenKind::Special:
        return addSpecial(token.value);
    case TokenKind::ClassEscape:
        return addClassEscape(token.value);
    case TokenKind::BackReference:
        return append(new reBackRef(token.value));
    case TokenKind::End:
        break;
    }
}

void RegExpParser::addSpecial(int unit) {
    const int index = reader_.index() - 1;
    switch (unit) {
    case '^':
        return append(new reBol);
    case '$':
        return append(new reEol);
    case '.':
        return addDots();
    case '[':
        return addSet();
    case '*':
        return addQuantifier(0, reQuantifier::unlimited, index);
    case '+':
        return addQuantifier(1, reQuantifier::unlimited, index);
    case '?':
        return addQuantifier(0, 1, index);
    case '{':
        return addCountedQuantifier();
    case '(':
        return openGroup();
    case ')':
        return closeGroup();
    case '|':
        return addAlternative();
    default:
        return addRun(unit); // a "]" without "["
    }
}

/// Takes over a node without records.
void RegExpParser::append(reAtom* node) {
    level_->chain.append(node);
    level_->lastQuantifier = targets_.length();
    level_->lastAlternation = alternationCount_;
}

/// Takes over a node whose records begin at these.
void RegExpParser::appendContainer(reAtom* node, int firstQuantifier, int firstAlternation) {
    level_->chain.append(node);
    level_->lastQuantifier = firstQuantifier;
    level_->lastAlternation = firstAlternation;
    if (level_->depth + node->height() > deepestNode) reader_.fail(reader_.index() - 1);
}

/// Gathers the units up to the next token of another kind. A quantifier binds to the last unit.
void RegExpParser::addRun(int firstUnit) {
    String text;
    int start = reader_.index();
    Token token = {TokenKind::Unit, firstUnit};
    for (; token.kind == TokenKind::Unit || text.isEmpty(); token = reader_.read(groupCount_)) {
        text.append(static_cast<unsigned short>(token.value));
        start = reader_.index();
    }
    reader_.setIndex(start);
    const bool isQuantified = token.isSpecial('{') || token.isSpecial('+') ||
                              token.isSpecial('*') || token.isSpecial('?');
    const int last = text.length() - 1;
    if (!isQuantified || last == 0) return addText(text);
    addText(text.substr(0, last));
    addText(text.substr(last));
}

void RegExpParser::addText(const String& text) {
    if (!ignoreCase_) return append(new reString(text));
    String upper;
    for (unsigned short unit : text)
        upper.append(UnicodeUtils::towupper(unit));
    append(new reString(upper));
}

/// Kept: a quantifier binds to the whole run of dots, though of a run of units it takes the last
/// one (held by PatternTest.RepeatsRunsOfDotsAsAWhole).
void RegExpParser::addDots() {
    int count = 1;
    for (; reader_.peek() == '.'; reader_.skip())
        ++count;
    append(new reAnyChar(count));
}

void RegExpParser::addClassEscape(int letter) {
    if (letter == 'b' || letter == 'B') return append(new reWordBoundary(letter == 'B'));
    const bool isNegated = letter < 'a';
    ranges_.addClass(static_cast<char>(isNegated ? letter - 'A' + 'a' : letter));
    append(new reSet(ranges_, isNegated, ignoreCase_));
}

void RegExpParser::addSet() {
    const bool isNegated = reader_.peek() == '^';
    if (isNegated) reader_.skip();
    Token token = reader_.readInBrackets();
    for (; token.kind != TokenKind::End && !token.isSpecial(']'); token = reader_.readInBrackets())
        addSetItem(token);
    if (token.kind != TokenKind::End) append(new reSet(ranges_, isNegated, ignoreCase_));
}

void RegExpParser::addSetItem(const Token& token) {
    if (token.kind == TokenKind::ClassEscape && token.value == 'b') {
        ranges_.add('\b', '\b');
    } else if (token.kind == TokenKind::ClassEscape) {
        ranges_.addClass(static_cast<char>(token.value));
    } else if (reader_.peek() == '-') {
        addRange(token.value);
    } else {
        const auto unit = static_cast<unsigned short>(token.value);
        ranges_.add(unit, unit);
    }
}

/// Reads "-" and what follows. What cannot end a range makes the "-" an item of its own.
void RegExpParser::addRange(int first) {
    reader_.skip();
    const bool isLastItem = reader_.peek() == ']';
    const int lastIndex = reader_.index();
    const Token token = isLastItem ? Token{TokenKind::End, 0} : reader_.readInBrackets();
    const bool isClass = token.kind == TokenKind::ClassEscape && token.value != 'b';
    const auto unit = static_cast<unsigned short>(first);
    if (isLastItem || isClass) {
        ranges_.add(unit, unit);
        ranges_.add('-', '-');
        if (isClass) ranges_.addClass(static_cast<char>(token.value));
        return;
    }
    const int last = token.kind == TokenKind::ClassEscape ? '\b' : token.value;
    if (last < first) return reader_.fail(lastIndex);
    ranges_.add(unit, static_cast<unsigned short>(last));
}

void RegExpParser::addQuantifier(int minimum, int maximum, int index) {
    OwnedChain repeated(level_->chain.takeLast());
    if (!repeated) return reader_.fail(index);
    const bool isLazy = reader_.peek() == '?';
    if (isLazy) reader_.skip();
    const int following = reader_.peek();
    if (following == '*' || following == '+' || following == '?')
        return reader_.fail(reader_.index());
    targets_.append(isLazy ? minimum : maximum);
    const RecordRange records = {level_->lastQuantifier, targets_.length(), level_->lastAlternation,
                                 alternationCount_};
    auto quantifier = std::make_unique<reQuantifier>(minimum, maximum, isLazy);
    quantifier->setChildren(std::move(repeated), records);
    appendContainer(quantifier.release(), level_->lastQuantifier, level_->lastAlternation);
}

/// What is no complete count is text, up to where that shows.
void RegExpParser::addCountedQuantifier() {
    const int start = reader_.index() - 1;
    const int minimum = reader_.readNumber();
    int maximum = minimum;
    if (minimum >= 0 && reader_.peek() == ',') {
        reader_.skip();
        maximum = reader_.readNumber();
        maximum = maximum < 0 ? reQuantifier::unlimited : std::max(minimum, maximum);
    }
    if (minimum < 0 || reader_.peek() != '}') return addText(reader_.textFrom(start));
    reader_.skip();
    addQuantifier(minimum, maximum, start);
}

void RegExpParser::openGroup() {
    if (level_->depth >= deepestGroup) return reader_.fail(reader_.index() - 1);
    GroupKind kind = GroupKind::Capturing;
    const bool isMarked = reader_.peek() == '?';
    const int mark = isMarked ? reader_.peek(1) : -1;
    if (mark == ':') kind = GroupKind::Plain;
    if (mark == '=') kind = GroupKind::LookAhead;
    if (mark == '!') kind = GroupKind::NegativeLookAhead;
    if (!isMarked) ++groupCount_;
    if (kind != GroupKind::Capturing) reader_.skip(2);
    level_ = new Level(level_, groupCount_, kind, targets_.length(), alternationCount_);
    // Kept: a mark that means nothing is an optional "?", and the group counts as no new one
    // (held by PatternTest.TakesUnknownGroupMarksLiterally).
    if (isMarked && kind == GroupKind::Capturing) addText("?");
}

/// Kept: without a group that is open a ")" ends the alternatives before it and is then a unit like
/// any other (held by PatternTest.TakesUnmatchedClosersLiterally).
void RegExpParser::closeGroup() {
    endAlternatives();
    if (!level_->outer) return addRun(')');
    auto group = std::make_unique<reSubExpr>(level_->groupIndex, level_->groupKind);
    group->setChildren(
        OwnedChain(level_->chain.release()),
        {level_->firstQuantifier, targets_.length(), level_->firstAlternation, alternationCount_});
    const std::unique_ptr<Level> closed(std::exchange(level_, level_->outer));
    appendContainer(group.release(), closed->firstQuantifier, closed->firstAlternation);
}

void RegExpParser::addAlternative() {
    if (!level_->alternatives)
        level_->alternatives = std::make_unique<reAlternative>(alternationCount_++);
    if (level_->chain.isEmpty()) addText(String());
    level_->alternatives->add(OwnedChain(level_->chain.release()));
}

/// Puts the alternatives, if there are any, in the place of the sequence.
void RegExpParser::endAlternatives() {
    if (!level_->alternatives) return;
    addAlternative();
    level_->alternatives->setRecords(
        {level_->firstQuantifier, targets_.length(), level_->firstAlternation, alternationCount_});
    appendContainer(level_->alternatives.release(), level_->firstQuantifier,
                    level_->firstAlternation);
}

} // namespace KrCore
