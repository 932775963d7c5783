#include "regexp/Nodes.h"
#include "regexp/UnitTests.h"

#include <algorithm>
#include <cstring>

namespace KrCore {

reAtom::~reAtom() = default;

bool reAtom::backtrack(MatchState&) const { return false; }

void reAtom::reset(MatchState&) const {}

void reAtom::rearm(MatchState&) const {}

bool reAtom::clearCaptures(MatchState& state) const {
    for (const reAtom* node = next; node; node = node->next) {
        // Of the others none does more than to look behind itself.
        if (node->kind() == NodeKind::SubExpr) return node->clearCaptures(state);
    }
    return false;
}

void reAtom::adoptTraits(const reAtom* chain) {
    for (const reAtom* node = chain; node; node = node->next) {
        isBacktrackable_ = isBacktrackable_ || node->isBacktrackable_;
        hasAlternation_ = hasAlternation_ || node->hasAlternation_;
        firstSlot_ = std::min(firstSlot_, node->firstSlot_);
        lastSlot_ = std::max(lastSlot_, node->lastSlot_);
        height_ = std::max(height_, node->height_ + 1);
    }
}

void NodeChain::append(reAtom* node) {
    node->prev = last_;
    (last_ ? last_->next : first_) = node;
    last_ = node;
}

reAtom* NodeChain::takeLast() {
    reAtom* const node = last_;
    if (!node) return nullptr;
    last_ = node->prev;
    (last_ ? last_->next : first_) = nullptr;
    node->prev = nullptr;
    return node;
}

void NodeChain::destroy(reAtom* first) {
    while (first)
        delete std::exchange(first, first->next);
}

bool reBol::match(MatchState& state) const {
    return isLineStart(state.units, state.position, state.isMultiLine());
}

bool reEol::match(MatchState& state) const {
    return isLineEnd(state.units, state.length, state.position, state.isMultiLine());
}

bool reAnyChar::match(MatchState& state) const {
    // Kept: U+000A alone is refused (held by MatchTest.LetsADotMatchAllButLineFeeds).
    for (int i = 0; i < count_; ++i) {
        if (state.atEnd() || state.units[state.position] == '\n') return false;
        ++state.position;
    }
    return true;
}

bool reString::match(MatchState& state) const {
    const int length = text_.length();
    if (length > state.length - state.position) return false;
    const unsigned short* subject = state.units + state.position;
    const unsigned short* units = text_.wstr();
    if (!state.ignoresCase()) {
        if (std::memcmp(units, subject, std::size_t(length) * sizeof *units) != 0) return false;
    } else {
        for (int i = 0; i < length; ++i) {
            if (units[i] != foldUpper(subject[i])) return false;
        }
    }
    state.position += length;
    return true;
}

bool reBackRef::match(MatchState& state) const {
    if (group_ >= state.captureCount) return false;
    const Capture& capture = state.captures[group_];
    if (capture.start < 0) return true;
    const int length = capture.end - capture.start;
    if (length > state.length - state.position) return false;
    for (int i = 0; i < length; ++i) {
        if (!isSameUnit(state.units[capture.start + i], state.units[state.position + i],
                        state.ignoresCase()))
            return false;
    }
    state.position += length;
    return true;
}

bool reWordBoundary::match(MatchState& state) const {
    return isBoundary(state.units, state.length, state.position, negated_);
}

reSet::reSet(UnitRanges& ranges, bool negated, bool ignoreCase)
    : reAtom(NodeKind::Set), negated_(negated), ignoreCase_(ignoreCase) {
    ranges.moveTo(units_);
    if (!ignoreCase) {
        for (unsigned word = 0; word < UnitSet::lowWords; ++word)
            low_[word] = negated ? ~units_.lowWord(word) : units_.lowWord(word);
        return;
    }
    for (unsigned unit = 0; unit < UnitSet::lowCount; ++unit) {
        if (acceptsByRule(static_cast<unsigned short>(unit)))
            low_[unit >> 5U] |= 1U << (unit & 31U);
    }
}

bool reSet::acceptsByRule(unsigned short unit) const {
    const bool isIn = ignoreCase_
                          ? units_.contains(foldUpper(unit)) || units_.contains(foldLower(unit))
                          : units_.contains(unit);
    return isIn != negated_;
}

bool reSet::mayShareUnits(const reSet& other) const {
    for (unsigned word = 0; word < UnitSet::lowWords; ++word) {
        if (low_[word] & other.low_[word]) return true;
    }
    return mayAcceptHigh() && other.mayAcceptHigh();
}

bool reSet::match(MatchState& state) const {
    if (state.atEnd() || !accepts(state.units[state.position])) return false;
    ++state.position;
    return true;
}

} // namespace KrCore
