#include "regexp/Nodes.h"

#include <algorithm>

namespace KrCore {

// Kept: a fixed count has no choices of its own and gives its children no second chance; with
// children that have choices it counts as backtrackable all the same, because they have to be put
// back (held by MatchTest.GivesAFixedCountNoSecondChance).
reQuantifier::reQuantifier(int minimum, int maximum, bool lazy)
    : reContainer(NodeKind::Quantifier), minimum_(minimum), maximum_(maximum), lazy_(lazy) {
    isBacktrackable_ = minimum < maximum;
}

/// Repeats as often as the record says and returns how often that was.
int reQuantifier::repeat(MatchState& state, QuantifierRecord& record) const {
    SavedCaptures afterLast(state, firstSlot_);
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
            count = record.target = minimum_;
            record.exhausted = true;
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
        // After a repetition that matched nothing there would be a next target for ever.
        if (record.exhausted || record.target >= maximum_ || record.target >= state.length) return false;
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
