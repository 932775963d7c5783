#pragma once

#include "foundation/WorkStack.h"

#include <krcore/regexp/Capture.h>
#include <krcore/regexp/RegExp.h>

#include <algorithm>

namespace KrCore {

class RegExpData;
class reAtom;

/// The choice of one quantifier.
struct QuantifierRecord {
    int target;        ///< How many repetitions to try.
    int highest;       ///< The most there have been since the last reset.
    bool exhausted;    ///< A repetition matched nothing: more of them are the same.
    bool hasBeenEmpty; ///< That has been so since the last reset.
};

/// The choice of one alternation.
struct AlternationRecord {
    int current;  ///< The alternative to try first.
    bool rearmed; ///< In a further repetition: starts over and leaves `current` alone.
};

/// Which records belong to a node and all within it.
struct RecordRange {
    int firstQuantifier;
    int endQuantifier;
    int firstAlternation;
    int endAlternation;
};

/// Everything that changes during one search.
class MatchState {
public:
    MatchState(const RegExpData& data, const unsigned short* subject, int subjectLength,
               Capture* list);
    MatchState(const MatchState&) = delete;
    MatchState& operator=(const MatchState&) = delete;
    ~MatchState();

    bool ignoresCase() const { return (flags_ & RegExp::IgnoreCase) != 0; }
    bool isMultiLine() const { return (flags_ & RegExp::MultiLine) != 0; }
    bool atEnd() const { return position >= length; }

    QuantifierRecord& quantifier(int index) { return quantifiers_[index]; }
    AlternationRecord& alternation(int index) { return alternations_[index]; }
    /// Puts records back to their first candidates and clears what they know of the search so far,
    /// so that a match depends on its start position alone.
    void reset(const RecordRange& range);

    /// Lets an alternation start over in every repetition, until `endRearm` is called with the mark
    /// that `rearmMark` gave.
    void rearm(int alternation);
    int rearmMark() const { return rearmedCount_; }
    void endRearm(int mark);

    /// Unsets the slots from `firstSlot` on.
    void clearCaptures(int firstSlot);

    /// Matches a chain from the current position, trying all ways.
    bool walk(const reAtom& first);

    const unsigned short* const units;
    const int length;
    int position = 0;
    Capture* const captures;
    const int captureCount;

private:
    friend class SavedCaptures;
    static constexpr std::size_t bufferSize = 512;

    const reAtom* matchEarlierChoice(const reAtom* node, int& depth);

    const RegExpData& data_;
    const int flags_;
    QuantifierRecord* quantifiers_;
    AlternationRecord* alternations_;
    int* rearmed_; // indexes of marked alternations, the one marked last at the end
    int rearmedCount_ = 0;
    int* starts_;              // where each choice of the chain that is walked began
    WorkStack<Capture> saved_; // by the nodes that match one within the other
    void* block_ = nullptr;    // what the records need beyond the buffer
    alignas(8) unsigned char buffer_[bufferSize];
};

/// A copy of some slots, for as long as a node matches. Nodes match one within the other, so what a
/// copy has no room for lies on a stack that the whole search shares.
class SavedCaptures {
public:
    SavedCaptures(MatchState& state, int firstSlot, int lastSlot)
        : state_(state), firstSlot_(firstSlot),
          count_(std::max(std::min(lastSlot, state.captureCount - 1) - firstSlot + 1, 0)),
          offset_(state.saved_.size()) {}
    SavedCaptures(const SavedCaptures&) = delete;
    SavedCaptures& operator=(const SavedCaptures&) = delete;
    ~SavedCaptures() { state_.saved_.shrinkTo(offset_); }

    /// Again and again; the last copy counts.
    void save() {
        if (count_ > 0) copyOut();
    }
    /// Does nothing when nothing was saved.
    void restore();

private:
    static constexpr int bufferedSlots = 4;

    void copyOut();
    Capture* copy() { return count_ > bufferedSlots ? &state_.saved_[offset_] : buffer_; }

    MatchState& state_;
    const int firstSlot_;
    const int count_;
    bool isSaved_ = false;
    const std::size_t offset_;
    Capture buffer_[bufferedSlots];
};

} // namespace KrCore
