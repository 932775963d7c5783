#include "regexp/UnitRanges.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace KrCore {

namespace {

// Each sorted, with gaps between the ranges.
constexpr UnitRange digits[] = {{'0', '9'}};
// Kept: U+0008 is white space here (held by PatternTest.TakesABackspaceForWhiteSpace).
constexpr UnitRange spaces[] = {
    {0x0008, 0x000D}, {0x0020, 0x0020}, {0x00A0, 0x00A0}, {0x1680, 0x1680}, {0x180E, 0x180E},
    {0x2000, 0x200A}, {0x2028, 0x2029}, {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000}};
constexpr UnitRange wordUnits[] = {{'0', '9'}, {'A', 'Z'}, {'_', '_'}, {'a', 'z'}};

constexpr unsigned short lastUnit = 0xFFFF;
constexpr std::size_t mostRanges = 65536; // once closed up there are at most half as many

std::span<const UnitRange> rangesOf(char letter) {
    switch (letter) {
    case 'd':
    case 'D':
        return digits;
    case 's':
    case 'S':
        return spaces;
    default:
        return wordUnits;
    }
}

} // namespace

void UnitRanges::add(unsigned short first, unsigned short last) {
    if (ranges_.size() == mostRanges) normalize();
    ranges_.push({first, last});
}

void UnitRanges::addClass(char letter) {
    const std::span<const UnitRange> ranges = rangesOf(letter);
    const bool isInverted = letter < 'a';
    if (!isInverted) {
        for (UnitRange range : ranges)
            add(range.first, range.last);
        return;
    }
    unsigned next = 0; // all three classes begin behind U+0000 and end before U+FFFF
    for (UnitRange range : ranges) {
        add(static_cast<unsigned short>(next), static_cast<unsigned short>(range.first - 1));
        next = range.last + 1U;
    }
    add(static_cast<unsigned short>(next), lastUnit);
}

void UnitRanges::normalize() {
    const auto hasNoGap = [](UnitRange a, UnitRange b) { return b.first <= a.last + 1U; };
    if (std::adjacent_find(ranges_.begin(), ranges_.end(), hasNoGap) == ranges_.end()) return;
    std::sort(ranges_.begin(), ranges_.end(),
              [](UnitRange a, UnitRange b) { return a.first < b.first; });
    std::size_t kept = 0;
    for (UnitRange range : ranges_) {
        if (kept > 0 && range.first <= ranges_[kept - 1].last + 1U) {
            ranges_[kept - 1].last = std::max(ranges_[kept - 1].last, range.last);
        } else {
            ranges_[kept++] = range;
        }
    }
    ranges_.shrinkTo(kept);
}

void UnitRanges::moveTo(UnitSet& set) {
    normalize();
    set.assign(ranges_.begin(), static_cast<int>(ranges_.size()));
    ranges_.shrinkTo(0);
}

} // namespace KrCore
