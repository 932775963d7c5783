#include "regexp/Nodes.h"

#include <algorithm>

namespace KrCore {

bool matchChain(const reAtom* first, MatchState& state) {
    for (const reAtom* node = first; node; node = node->next) {
        if (!node->match(state)) return false;
    }
    return true;
}

bool backtrackChain(const reAtom* last, MatchState& state) {
    for (const reAtom* node = last; node; node = node->prev) {
        if (node->backtrack(state)) return true;
        node->reset(state);
    }
    return false;
}

reContainer::~reContainer() { NodeChain::destroy(first_); }

void reContainer::reset(MatchState& state) const { state.reset(records_); }

void reContainer::rearm(MatchState& state) const {
    if (!hasAlternation_) return;
    for (const reAtom* node = first_; node; node = node->next)
        node->rearm(state);
}

void reContainer::setChildren(OwnedChain chain, const RecordRange& records) {
    first_ = chain.release();
    last_ = first_;
    while (last_ && last_->next)
        last_ = last_->next;
    records_ = records;
    adoptTraits(first_);
}

reSubExpr::reSubExpr(int index, GroupKind kind)
    : reContainer(NodeKind::SubExpr), index_(index), groupKind_(kind) {
    if (kind == GroupKind::Plain) return;
    firstSlot_ = firstCleared();
    // A look-ahead that fails unsets all slots from there on.
    lastSlot_ = kind == GroupKind::Capturing ? index : noSlot;
}

bool reSubExpr::match(MatchState& state) const {
    const int start = state.position;
    const bool matches = matchChain(first_, state);
    switch (groupKind_) {
    case GroupKind::Capturing:
        if (matches && index_ < state.captureCount) {
            state.captures[index_].start = start;
            state.captures[index_].end = state.position;
        }
        return matches;
    case GroupKind::Plain:
        return matches;
    case GroupKind::LookAhead:
    case GroupKind::NegativeLookAhead:
        break;
    }
    if (!matches) clearCaptures(state);
    state.position = start;
    return matches == (groupKind_ == GroupKind::LookAhead);
}

bool reSubExpr::backtrack(MatchState& state) const {
    // Kept: what a look-ahead has found stays found, in whatever way
    // (held by MatchTest.NeverTriesALookAheadAgain).
    if (isLookAhead()) return false;
    if (groupKind_ == GroupKind::Capturing && index_ < state.captureCount)
        state.captures[index_].start = -1;
    return backtrackChain(last_, state);
}

/// Kept: the slots of all later groups go too, wherever they stand
/// (held by MatchTest.UnsetsAllLaterGroupsWithARepetition).
bool reSubExpr::clearCaptures(MatchState& state) const {
    state.clearCaptures(firstCleared());
    return true;
}

} // namespace KrCore
