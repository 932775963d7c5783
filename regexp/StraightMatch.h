#pragma once

#include "regexp/StraightProgram.h"

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
    ~StraightMatch() { Heap::operator delete(block_); }

    /// Where a match that begins at `position` ends, or -1. A failed one leaves captures of groups
    /// that it has been through; a match fills them all.
    int matchAt(int position);

private:
    /// A step that may be taken in another way.
    struct Choice {
        const Step* step;
        int position; ///< Of a run its end; of a branch its start.
        int limit;    ///< Of a run the last end to try.
    };

    bool take(const Step& step, int& position);
    bool takeText(const Step& step, int& position) const;
    bool takeFoldedText(const Step& step, int& position) const;
    bool takeDots(const Step& step, int& position) const;
    bool takeReference(const Step& step, int& position) const;
    bool takeRun(const Step& run, int& position);
    int runEnd(const Step& run, int start, int limit) const;
    const Step* takeBranch(const Step* branch, int position);
    const Step* takeNextChoice(int& position);
    bool shorten(Choice& run) const;
    bool lengthen(Choice& run) const;

    const StraightProgram& program_;
    const unsigned short* units_;
    int length_;
    bool ignoreCase_;
    bool multiLine_;
    Capture* captures_;
    Choice* choices_; // in the buffer, or in the block
    int choiceCount_ = 0;
    void* block_ = nullptr;
    static constexpr int bufferedChoices = 16;
    Choice buffer_[bufferedChoices];
};

} // namespace KrCore
