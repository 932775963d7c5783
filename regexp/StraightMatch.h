#pragma once

#include "regexp/StartFilter.h"

#include <krcore/regexp/Capture.h>

namespace KrCore {

/// One search by a straight program. Whatever is still to be tried stands on a stack of choices,
/// one for each run and alternation at most.
class StraightMatch {
public:
    StraightMatch(const StraightProgram& program, const unsigned short* units, int length,
                  int flags, Capture* captures);
    StraightMatch(const StraightMatch&) = delete;
    StraightMatch& operator=(const StraightMatch&) = delete;
    ~StraightMatch() {
        if (block_) Heap::operator delete(block_);
    }

    /// Where the first match that begins at `start` or behind lies; an unset capture without one.
    /// A match fills the captures of all groups; a failure may leave some behind.
    Capture search(const StartFilter& filter, int start);

private:
    /// A step that may be taken in another way.
    struct Choice {
        const Step* step;
        int position; ///< Of a run its end; of a branch its start.
        int limit;    ///< Of a run the last end to try.
    };
    /// Where to go on.
    struct Way {
        const Step* step; ///< Null when everything has been tried.
        int position;
    };

    int matchAt(int start);
    int behindText(const Step& step, int position) const;
    int behindFoldedText(const Step& step, int position) const;
    int behindDots(const Step& step, int position) const;
    int behindReference(const Step& step, int position) const;
    int behindRun(const Step& run, int position);
    int runEnd(const Step& run, int start, int limit) const;
    const Step* firstBranch(const Step* branch, int position);
    Way nextWay();
    int shorter(const Choice& run) const;
    int lazyEnd(const Step& run, int start, int most) const;
    int longer(const Choice& run) const;

    const StraightProgram& program_;
    const unsigned short* units_;
    int length_;
    bool ignoreCase_;
    bool multiLine_;
    Capture* captures_;
    Choice* choices_; // in the buffer, or in the block
    int choiceCount_ = 0;
    int lastRuledOut_ = 0; // where no match begins, nor between the start and there
    void* block_ = nullptr;
    static constexpr int bufferedChoices = 16;
    Choice buffer_[bufferedChoices];
};

} // namespace KrCore
