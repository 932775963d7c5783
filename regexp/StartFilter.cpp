#include "regexp/StartFilter.h"

#include "regexp/UnitTests.h"
#include "text/UnitSearch.h"
#include "text/Units.h"

#include <algorithm>

namespace KrCore {

namespace {

// Alternatives that may be empty lead on to those behind them, which doubles the ways.
constexpr int deepestAlternatives = 8;

} // namespace

void StartFilter::compile(const Step* steps, bool multiLine) {
    const Step* first = steps;
    while (first->kind == StepKind::Open || first->kind == StepKind::Boundary)
        ++first;
    if (first->kind == StepKind::LineStart) {
        kind_ = multiLine ? Kind::AtLineStarts : Kind::AtStart;
    } else if (first->kind == StepKind::Text) {
        kind_ = Kind::BeforeText;
        text_ = first->text;
        textLength_ = first->limit;
    } else {
        collect(steps, steps, 0);
        settle();
    }
}

/// Collects what a match may begin with when it goes on at a step.
void StartFilter::collect(const Step* steps, const Step* step, int depth) {
    for (; !isOpen_; ++step) {
        switch (step->kind) {
        case StepKind::Text:
            return addUnit(step->text[0]);
        case StepKind::FoldedText:
            return addFolded(step->text[0]);
        case StepKind::Dots:
        case StepKind::Set:
            return addRun(*step);
        case StepKind::Run:
            addRun(*step);
            if (step->number > 0) return;
            break;
        case StepKind::Branch:
            isOpen_ = depth == deepestAlternatives;
            for (const Step* branch = step; !isOpen_; branch = steps + branch->target) {
                collect(steps, branch + 1, depth + 1);
                if (branch->target < 0) return;
            }
            return;
        case StepKind::Jump:
            return collect(steps, steps + step->target, depth);
        case StepKind::BackReference:
        case StepKind::End:
            isOpen_ = true;
            return;
        case StepKind::LineStart:
        case StepKind::LineEnd:
        case StepKind::Boundary:
        case StepKind::Open:
        case StepKind::Close:
            break;
        }
    }
}

void StartFilter::addUnit(unsigned short unit) {
    if (unit < 256) {
        low_[unit] = true;
    } else {
        hasHigh_ = true;
    }
}

void StartFilter::addRun(const Step& run) {
    if (run.runUnits == RunUnits::Exact) return addUnit(run.unit);
    hasHigh_ = hasHigh_ || run.runUnits != RunUnits::Set || run.set->mayAcceptHigh();
    for (int unit = 0; unit < 256; ++unit)
        low_[unit] = low_[unit] || isInRun(run, static_cast<unsigned short>(unit));
}

/// Units beyond 255 may have an upper case below.
void StartFilter::addFolded(unsigned short upper) {
    hasHigh_ = true;
    for (int unit = 0; unit < 256; ++unit) {
        if (foldUpper(static_cast<unsigned short>(unit)) == upper) low_[unit] = true;
    }
}

void StartFilter::settle() {
    if (isOpen_) return;
    kind_ = Kind::BeforeUnit;
    if (!hasHigh_ && std::count(low_, low_ + 256, true) == 1)
        onlyUnit_ = static_cast<int>(std::find(low_, low_ + 256, true) - low_);
}

int StartFilter::nextUnit(const unsigned short* units, int length, int position) const {
    if (onlyUnit_ >= 0) {
        const int found =
            findUnit(units + position, length - position, static_cast<unsigned short>(onlyUnit_));
        return found < 0 ? -1 : position + found;
    }
    for (; position < length; ++position) {
        const unsigned short unit = units[position];
        if (unit < 256 ? low_[unit] : hasHigh_) return position;
    }
    return -1;
}

int StartFilter::next(const unsigned short* units, int length, int position) const {
    switch (kind_) {
    case Kind::Everywhere:
        return position <= length ? position : -1;
    case Kind::AtStart:
        return position == 0 ? 0 : -1;
    case Kind::AtLineStarts:
        for (; position <= length; ++position) {
            if (isLineStart(units, position, true)) return position;
        }
        return -1;
    case Kind::BeforeText: {
        if (length - position < textLength_) return -1;
        const int found = findText(units + position, length - position, text_, textLength_);
        return found < 0 ? -1 : position + found;
    }
    case Kind::BeforeUnit:
        return nextUnit(units, length, position);
    }
    return -1;
}

} // namespace KrCore
