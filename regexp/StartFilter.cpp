#include "regexp/StartFilter.h"

#include "regexp/UnitTests.h"
#include "text/UnitBlock.h"
#include "text/UnitSearch.h"
#include "text/Units.h"

#include <algorithm>
#include <bit>

namespace KrCore {

namespace {

// Alternatives that may be empty lead on to those behind them, which multiplies the ways. With so
// many steps looked at, a match may begin anywhere.
constexpr int mostSteps = 512;

bool isLetter(unsigned short upper) { return upper >= 'A' && upper <= 'Z'; }

/// Whether an upper-case mapping is that of an ASCII unit alone, or of an ASCII letter in its two
/// cases. I and S are those of U+0131 and U+017F too.
bool isPlain(unsigned short upper) { return upper < 0x80 && upper != 'I' && upper != 'S'; }

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
    } else if (first->kind == StepKind::FoldedText && findPlainUnits(*first)) {
        kind_ = Kind::BeforeFoldedText;
    } else {
        int budget = mostSteps;
        collect(steps, steps, budget);
        settle();
    }
}

/// Finds the first and the last unit of a folded text that are recognised by their bits.
bool StartFilter::findPlainUnits(const Step& text) {
    textLength_ = text.limit;
    bool isFound = false;
    for (int i = 0; i < textLength_; ++i) {
        const unsigned short upper = text.text[i];
        if (!isPlain(upper)) continue;
        const auto caseBit = static_cast<unsigned short>(isLetter(upper) ? 0x20 : 0);
        last_ = {i, caseBit, static_cast<unsigned short>(upper | caseBit)};
        if (!isFound) first_ = last_;
        isFound = true;
    }
    return isFound;
}

/// Collects what a match may begin with when it goes on at a step.
void StartFilter::collect(const Step* steps, const Step* step, int& budget) {
    for (; !isOpen_; ++step) {
        isOpen_ = --budget < 0;
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
            for (const Step* branch = step; !isOpen_; branch = steps + branch->target) {
                collect(steps, branch + 1, budget);
                if (branch->target < 0) return;
            }
            return;
        case StepKind::Jump:
            return collect(steps, steps + step->target, budget);
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
    withUnitTest(run, [this](auto isIn) {
        for (int unit = 0; unit < 256; ++unit)
            low_[unit] = low_[unit] || isIn(static_cast<unsigned short>(unit));
    });
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
    if (position >= length) return -1;
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

int StartFilter::nextFoldedText(const unsigned short* units, int length, int position) const {
    const auto blocks = [](const PlainUnit& plain, const unsigned short* at) {
        return (UnitBlock::load(at + plain.offset) | UnitBlock::of(plain.caseBit)) ==
               UnitBlock::of(plain.lower);
    };
    const auto isAt = [](const PlainUnit& plain, const unsigned short* at) {
        return (at[plain.offset] | plain.caseBit) == plain.lower;
    };
    const int positions = length - textLength_ + 1;
    for (; positions - position >= UnitBlock::size; position += UnitBlock::size) {
        const unsigned short* const at = units + position;
        const std::uint32_t mask = (blocks(first_, at) & blocks(last_, at)).mask();
        if (mask != 0) return position + std::countr_zero(mask) / 2;
    }
    for (; position < positions; ++position) {
        if (isAt(first_, units + position) && isAt(last_, units + position)) return position;
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
    case Kind::BeforeFoldedText:
        return nextFoldedText(units, length, position);
    case Kind::BeforeUnit:
        return nextUnit(units, length, position);
    }
    return -1;
}

} // namespace KrCore
