#include "regexp/Nodes.h"

#include <algorithm>
#include <utility>

namespace KrCore {

// Kept: a fixed count has no choices of its own and gives its children no second chance; with
// children that have choices it counts as backtrackable all the same, because they have to be put
// back (held by MatchTest.GivesAFixedCountNoSecondChance).
reQuantifier::reQuantifier(int minimum, int maximum, bool lazy)
    : reContainer(NodeKind::Quantifier), minimum_(minimum), maximum_(maximum), lazy_(lazy) {
    isBacktrackable_ = minimum < maximum;
}

void reQuantifier::setChildren(OwnedChain chain, const RecordRange& records) {
    reContainer::setChildren(std::move(chain), records);
    firstRepeatedSlot_ = firstSlot_;
    lastRepeatedSlot_ = lastSlot_;
    if (first_->kind() != NodeKind::SubExpr) return;
    // Before the first repetition of a group its slot and all behind it are unset.
    firstSlot_ = std::min(firstSlot_, static_cast<const reSubExpr*>(first_)->firstCleared());
    lastSlot_ = noSlot;
}

/// Repeats as often as the record says and returns how often that was.
int reQuantifier::repeat(MatchState& state, QuantifierRecord& record) const {
    SavedCaptures afterLast(state, firstRepeatedSlot_, lastRepeatedSlot_);
    const int mark = state.rearmMark();
    int count = 0;
    // Kept: at the end of the subject nothing is repeated, not even what matches the empty text
    // (held by MatchTest.RepeatsNothingAtTheEnd).
    while (count < record.target && !state.atEnd()) {
        const int start = state.position;
        if (!matchChain(first_, state)) {
            afterLast.restore();
            state.position = start;
            break;
        }
        if (hasAlternation_) reContainer::rearm(state);
        ++count;
        if (state.position == start) {
            // A lazy one that has been here before would get here for ever.
            record.target = lazy_ && record.hasBeenEmpty ? maximum_ : minimum_;
            record.exhausted = record.hasBeenEmpty = true;
            count = minimum_;
            break;
        }
        afterLast.save();
    }
    state.endRearm(mark);
    return count;
}

bool reQuantifier::match(MatchState& state) const {
    QuantifierRecord& record = state.quantifier(recordIndex());
    first_->clearCaptures(state);
    record.exhausted = false;
    const int count = repeat(state, record);
    record.highest = std::max(record.highest, count);
    // A lazy one that did not get this far has no more to try.
    if (lazy_ && count < record.target) record.target = maximum_;
    return count >= minimum_;
}

bool reQuantifier::takeNextTarget(const MatchState& state, QuantifierRecord& record) const {
    if (lazy_) {
        if (record.target >= maximum_ || record.target >= state.length) return false;
        ++record.target;
        return true;
    }
    if (record.target <= minimum_) return false;
    record.target = std::min(record.target, record.highest);
    if (record.target > minimum_) --record.target;
    return true;
}

bool reQuantifier::backtrack(MatchState& state) const {
    if (minimum_ >= maximum_) return false;
    QuantifierRecord& record = state.quantifier(recordIndex());
    if (takeNextTarget(state, record)) return true;
    if (record.exhausted || !backtrackChain(last_, state)) return false;
    record.target = lazy_ ? minimum_ : maximum_;
    return true;
}

} // namespace KrCore
