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

int StraightMatch::matchAt(int position) {
    choiceCount_ = 0;
    const Step* step = program_.steps();
    while (step->kind != StepKind::End) {
        if (step->kind == StepKind::Branch) {
            step = takeBranch(step, position);
        } else if (step->kind == StepKind::Jump) {
            step = program_.steps() + step->target;
        } else if (take(*step, position)) {
            ++step;
        } else {
            step = nullptr;
        }
        if (!step && !(step = takeNextChoice(position))) return -1;
    }
    return position;
}

bool StraightMatch::take(const Step& step, int& position) {
    switch (step.kind) {
    case StepKind::Text:
        return takeText(step, position);
    case StepKind::FoldedText:
        return takeFoldedText(step, position);
    case StepKind::Dots:
        return takeDots(step, position);
    case StepKind::Set:
        if (position >= length_ || !step.set->accepts(units_[position])) return false;
        ++position;
        return true;
    case StepKind::LineStart:
        return isLineStart(units_, position, multiLine_);
    case StepKind::LineEnd:
        return isLineEnd(units_, length_, position, multiLine_);
    case StepKind::Boundary:
        return isBoundary(units_, length_, position, step.isNegated);
    case StepKind::BackReference:
        return takeReference(step, position);
    case StepKind::Open:
        captures_[step.number].start = position;
        return true;
    case StepKind::Close:
        captures_[step.number].end = position;
        return true;
    case StepKind::Run:
        return takeRun(step, position);
    case StepKind::Branch:
    case StepKind::Jump:
    case StepKind::End:
        break;
    }
    return false;
}

bool StraightMatch::takeText(const Step& step, int& position) const {
    if (step.limit > length_ - position || units_[position] != step.text[0] ||
        mismatch(units_ + position, step.text, step.limit) != step.limit)
        return false;
    position += step.limit;
    return true;
}

bool StraightMatch::takeFoldedText(const Step& step, int& position) const {
    if (step.limit > length_ - position) return false;
    for (int i = 0; i < step.limit; ++i) {
        const unsigned short unit = units_[position + i];
        if (unit != step.text[i] && UnicodeUtils::towupper(unit) != step.text[i]) return false;
    }
    position += step.limit;
    return true;
}

bool StraightMatch::takeDots(const Step& step, int& position) const {
    if (step.number > length_ - position) return false;
    if (findUnit(units_ + position, step.number, '\n') >= 0) return false;
    position += step.number;
    return true;
}

bool StraightMatch::takeReference(const Step& step, int& position) const {
    const Capture& capture = captures_[step.number];
    const int count = capture.end - capture.start;
    if (count > length_ - position) return false;
    for (int i = 0; i < count; ++i) {
        if (!isSameUnit(units_[capture.start + i], units_[position + i], ignoreCase_)) return false;
    }
    position += count;
    return true;
}

int StraightMatch::runEnd(const Step& run, int start, int limit) const {
    int end = start;
    switch (run.runUnits) {
    case RunUnits::Exact:
        while (end < limit && units_[end] == run.unit)
            ++end;
        break;
    case RunUnits::Folded:
        while (end < limit && UnicodeUtils::towupper(units_[end]) == run.unit)
            ++end;
        break;
    case RunUnits::NoLineFeed: {
        const int found = findUnit(units_ + start, limit - start, '\n');
        end = found < 0 ? limit : start + found;
        break;
    }
    case RunUnits::Set:
        while (end < limit && run.set->accepts(units_[end]))
            ++end;
        break;
    }
    return end;
}

bool StraightMatch::takeRun(const Step& run, int& position) {
    const int start = position;
    const int rest = length_ - start;
    if (run.number > rest) return false;
    const int least = start + run.number;
    const int most = run.limit < rest ? start + run.limit : length_;
    const int end = runEnd(run, start, run.isLazy ? least : most);
    if (end < least) return false;
    position = end;
    if (run.isLazy) {
        if (end < most) choices_[choiceCount_++] = {&run, end, most};
    } else if (end > least && !run.isFinal) {
        choices_[choiceCount_++] = {&run, end, least};
    }
    return true;
}

/// The first step of the first alternative that is worth a try; null when there is none.
const Step* StraightMatch::takeBranch(const Step* branch, int position) {
    const int unit = position < length_ ? units_[position] : -1;
    while (branch->following >= 0 && branch->following != unit) {
        if (branch->target < 0) return nullptr;
        branch = program_.steps() + branch->target;
    }
    if (branch->target >= 0)
        choices_[choiceCount_++] = {program_.steps() + branch->target, position, 0};
    return branch + 1;
}

/// Takes the choice made last in its next way and returns the step to go on with; null when
/// everything has been tried.
const Step* StraightMatch::takeNextChoice(int& position) {
    while (choiceCount_ > 0) {
        Choice& choice = choices_[choiceCount_ - 1];
        const Step* const step = choice.step;
        if (step->kind == StepKind::Branch) {
            position = choice.position;
            --choiceCount_;
            if (const Step* next = takeBranch(step, position)) return next;
            continue;
        }
        if (!(step->isLazy ? lengthen(choice) : shorten(choice))) {
            --choiceCount_;
            continue;
        }
        position = choice.position;
        if (position == choice.limit) --choiceCount_;
        return step + 1;
    }
    return nullptr;
}

/// Moves the end of a run back to where the match can go on.
bool StraightMatch::shorten(Choice& run) const {
    const int following = run.step->following;
    for (int end = run.position - 1; end >= run.limit; --end) {
        if (following >= 0 && units_[end] != following) continue;
        run.position = end;
        return true;
    }
    return false;
}

/// Moves the end of a lazy run on to where the match can go on.
bool StraightMatch::lengthen(Choice& run) const {
    const int following = run.step->following;
    for (int end = run.position; end < run.limit && isInRun(*run.step, units_[end]); ++end) {
        const int unit = end + 1 < length_ ? units_[end + 1] : -1;
        if (following >= 0 && unit != following) continue;
        run.position = end + 1;
        return true;
    }
    return false;
}

} // namespace KrCore
