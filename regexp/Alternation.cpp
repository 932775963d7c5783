#include "regexp/Nodes.h"

#include "foundation/HeapBlocks.h"

#include <algorithm>
#include <memory>

namespace KrCore {

reAlternative::reAlternative(int recordIndex)
    : reAtom(NodeKind::Alternative), recordIndex_(recordIndex) {
    isBacktrackable_ = true;
    hasAlternation_ = true;
}

reAlternative::~reAlternative() {
    for (int i = 0; i < count_; ++i)
        NodeChain::destroy(alternatives_[i].first);
    Heap::operator delete(alternatives_);
}

void reAlternative::add(OwnedChain chain) {
    if (count_ == capacity_) {
        const int capacity = std::max(capacity_ * 2, 4);
        alternatives_ = static_cast<Alternative*>(
            growBlock(alternatives_, static_cast<std::size_t>(capacity) * sizeof(Alternative)));
        capacity_ = capacity;
    }
    Alternative& added = alternatives_[count_++];
    added = {chain.release(), nullptr, false};
    for (reAtom* node = added.first; node; node = node->next) {
        added.isBacktrackable = added.isBacktrackable || node->isBacktrackable();
        added.last = node;
    }
    adoptTraits(added.first);
}

/// Kept: an alternative that is given up leaves its captures behind for those after it, unless none
/// matches; and one that could match in another way ends the attempt
/// (held by MatchTest.LeavesTheCapturesOfAbandonedAlternatives).
bool reAlternative::tryFrom(int& index, MatchState& state) const {
    const int start = state.position;
    SavedCaptures before(state, firstSlot_, lastSlot_);
    before.save();
    while (index < count_) {
        const Alternative& alternative = alternatives_[index];
        state.position = start;
        if (matchChain(alternative.first, state)) return true;
        if (alternative.isBacktrackable) break;
        ++index;
    }
    state.position = start;
    before.restore();
    return false;
}

bool reAlternative::match(MatchState& state) const {
    AlternationRecord& record = state.alternation(recordIndex_);
    if (record.rearmed) {
        int index = 0;
        return tryFrom(index, state);
    }
    if (record.current >= count_) return true;
    return tryFrom(record.current, state);
}

bool reAlternative::backtrack(MatchState& state) const {
    AlternationRecord& record = state.alternation(recordIndex_);
    if (record.current >= count_) return false;
    if (backtrackChain(alternatives_[record.current].last, state)) return true;
    return ++record.current < count_;
}

void reAlternative::reset(MatchState& state) const { state.reset(records_); }

/// Only marks the record. Were the current alternative put back to the first one, the search for
/// the next choice would never end; were it left where the last repetition stopped, `(?:a|b)+`
/// would not match "ba".
void reAlternative::rearm(MatchState& state) const {
    state.rearm(recordIndex_);
    for (int i = 0; i < count_; ++i) {
        for (const reAtom* node = alternatives_[i].first; node; node = node->next) {
            if (node->hasAlternation()) node->rearm(state);
        }
    }
}

} // namespace KrCore
