#include "regexp/StraightMatch.h"

#include "regexp/UnitTests.h"
#include "text/Units.h"

#include <algorithm>
#include <cstring>

namespace KrCore {

StraightMatch::StraightMatch(const StraightProgram& program, const unsigned short* units,
                             int length, int flags, Capture* captures)
    : program_(program), units_(units), length_(length),
      ignoreCase_((flags & RegExp::IgnoreCase) != 0), multiLine_((flags & RegExp::MultiLine) != 0),
      captures_(captures), choices_(buffer_) {
    const auto count = static_cast<std::size_t>(program.choiceCount());
    if (count <= bufferedChoices) return;
    block_ = Heap::operator new(count * sizeof(Choice));
    choices_ = static_cast<Choice*>(block_);
}

Capture StraightMatch::search(const StartFilter& filter, int start) {
    for (int position = start;; position = lastRuledOut_ + 1) {
        position = filter.next(units_, length_, position);
        if (position < 0) return {};
        const int end = matchAt(position);
        if (end >= 0) return {position, end};
    }
}

/// Where a match that begins at `start` ends, or -1.
int StraightMatch::matchAt(int start) {
    choiceCount_ = 0;
    lastRuledOut_ = start;
    const Step* step = program_.steps();
    int position = start;
    for (;;) {
        int next = -1; // where the step ends if it matches
        switch (step->kind) {
        case StepKind::Text:
            next = behindText(*step, position);
            break;
        case StepKind::FoldedText:
            next = behindFoldedText(*step, position);
            break;
        case StepKind::Dots:
            next = behindDots(*step, position);
            break;
        case StepKind::Set:
            if (position < length_ && step->set->accepts(units_[position])) next = position + 1;
            break;
        case StepKind::LineStart:
            if (isLineStart(units_, position, multiLine_)) next = position;
            break;
        case StepKind::LineEnd:
            if (isLineEnd(units_, length_, position, multiLine_)) next = position;
            break;
        case StepKind::Boundary:
            if (isBoundary(units_, length_, position, step->isNegated)) next = position;
            break;
        case StepKind::BackReference:
            next = behindReference(*step, position);
            break;
        case StepKind::Open:
            captures_[step->number].start = next = position;
            break;
        case StepKind::Close:
            captures_[step->number].end = next = position;
            break;
        case StepKind::Run:
            next = behindRun(*step, position);
            break;
        case StepKind::Branch:
            step = firstBranch(step, position);
            if (step) continue;
            break;
        case StepKind::Jump:
            step = program_.steps() + step->target;
            continue;
        case StepKind::End:
            return position;
        }
        if (next >= 0) {
            position = next;
            ++step;
            continue;
        }
        const Way way = nextWay();
        if (!way.step) return -1;
        step = way.step;
        position = way.position;
    }
}

inline int StraightMatch::behindText(const Step& step, int position) const {
    const unsigned short* const units = units_ + position;
    if (step.limit > length_ - position || units[0] != step.unit) return -1;
    if (step.limit > 1 && mismatch(units, step.text, step.limit) != step.limit) return -1;
    return position + step.limit;
}

inline int StraightMatch::behindFoldedText(const Step& step, int position) const {
    if (step.limit > length_ - position) return -1;
    for (int i = 0; i < step.limit; ++i) {
        if (foldUpper(units_[position + i]) != step.text[i]) return -1;
    }
    return position + step.limit;
}

inline int StraightMatch::behindDots(const Step& step, int position) const {
    if (step.number > length_ - position) return -1;
    if (findUnit(units_ + position, step.number, '\n') >= 0) return -1;
    return position + step.number;
}

inline int StraightMatch::behindReference(const Step& step, int position) const {
    const Capture& capture = captures_[step.number];
    const int count = capture.end - capture.start;
    if (count > length_ - position) return -1;
    for (int i = 0; i < count; ++i) {
        if (!isSameUnit(units_[capture.start + i], units_[position + i], ignoreCase_)) return -1;
    }
    return position + count;
}

inline int StraightMatch::runEnd(const Step& run, int start, int limit) const {
    if (run.runUnits == RunUnits::NoLineFeed) {
        const int found = findUnit(units_ + start, limit - start, '\n');
        return found < 0 ? limit : start + found;
    }
    return withUnitTest(run, [start, limit, units = units_](auto isIn) {
        int end = start;
        while (end < limit && isIn(units[end]))
            ++end;
        return end;
    });
}

inline int StraightMatch::behindRun(const Step& run, int position) {
    const int rest = length_ - position;
    if (run.number > rest) return -1;
    const int least = position + run.number;
    const int most = run.limit < rest ? position + run.limit : length_;
    int end = runEnd(run, position, run.isLazy ? least : most);
    if (run.isLeading) lastRuledOut_ = end;
    if (end < least) return -1;
    if (run.isLazy) end = lazyEnd(run, end, most);
    const int lastEnd = run.isLazy ? most : least;
    if (end >= 0 && end != lastEnd && !run.isFinal) choices_[choiceCount_++] = {&run, end, lastEnd};
    return end;
}

/// The first step of the first alternative that is worth a try; null when there is none.
const Step* StraightMatch::firstBranch(const Step* branch, int position) {
    const int unit = position < length_ ? units_[position] : -1;
    while (branch->following >= 0 && branch->following != unit) {
        if (branch->target < 0) return nullptr;
        branch = program_.steps() + branch->target;
    }
    if (branch->target >= 0)
        choices_[choiceCount_++] = {program_.steps() + branch->target, position, 0};
    return branch + 1;
}

/// Takes the choice made last in its next way, or the one before it when there is none.
StraightMatch::Way StraightMatch::nextWay() {
    while (choiceCount_ > 0) {
        Choice& choice = choices_[choiceCount_ - 1];
        const Step* const step = choice.step;
        if (step->kind == StepKind::Branch) {
            const int position = choice.position;
            --choiceCount_;
            if (const Step* next = firstBranch(step, position)) return {next, position};
            continue;
        }
        choice.position = step->isLazy ? longer(choice) : shorter(choice);
        const int position = choice.position;
        if (position < 0 || position == choice.limit) --choiceCount_;
        if (position >= 0) return {step + 1, position};
    }
    return {nullptr, 0};
}

/// The next end before that of a run at which the match can go on, or -1.
inline int StraightMatch::shorter(const Choice& run) const {
    const int following = run.step->following;
    for (int end = run.position - 1; end >= run.limit; --end) {
        if (following < 0 || units_[end] == following) return end;
    }
    return -1;
}

/// The first end of a lazy run from one on at which the match can go on, or -1.
inline int StraightMatch::lazyEnd(const Step& run, int start, int most) const {
    const int following = run.following;
    if (following < 0) return start;
    return withUnitTest(run, [start, most, following, units = units_, length = length_](auto isIn) {
        int end = start;
        for (; end < most && units[end] != following; ++end) {
            if (!isIn(units[end])) return -1;
        }
        return end < length && units[end] == following ? end : -1;
    });
}

/// The next one behind that of a run.
inline int StraightMatch::longer(const Choice& run) const {
    if (!isInRun(*run.step, units_[run.position])) return -1;
    return lazyEnd(*run.step, run.position + 1, run.limit);
}

} // namespace KrCore
