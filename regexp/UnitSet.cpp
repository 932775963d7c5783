#include "regexp/UnitSet.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace KrCore {

void UnitSet::assign(const UnitRange* ranges, int count) {
    const UnitRange* const end = ranges + count;
    const UnitRange* firstHigh =
        std::find_if(ranges, end, [](UnitRange range) { return range.last >= lowCount; });
    const auto highCount = static_cast<std::size_t>(end - firstHigh);
    if (highCount > 0) {
        ranges_ = static_cast<UnitRange*>(Heap::operator new(highCount * sizeof(UnitRange)));
        std::memcpy(ranges_, firstHigh, highCount * sizeof(UnitRange));
        rangeCount_ = static_cast<int>(highCount);
    }
    for (const UnitRange* range = ranges; range != end && range->first < lowCount; ++range)
        addLow(range->first, std::min<unsigned>(range->last, lowCount - 1));
}

void UnitSet::addLow(unsigned first, unsigned last) {
    const unsigned lastWord = last >> 5U;
    std::uint32_t bits = ~0U << (first & 31U);
    for (unsigned word = first >> 5U; word < lastWord; ++word, bits = ~0U)
        low_[word] |= bits;
    low_[lastWord] |= bits & ~0U >> (31U - (last & 31U));
}

bool UnitSet::containsHigh(unsigned short unit) const {
    const UnitRange* const start = ranges_;
    const UnitRange* const end = start + rangeCount_;
    const UnitRange* const range = std::lower_bound(
        start, end, unit, [](UnitRange known, unsigned short value) { return known.last < value; });
    return range != end && range->first <= unit;
}

} // namespace KrCore
