#include "text/UnitSearch.h"

#include "text/UnitBlock.h"
#include "text/Units.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace KrCore {

namespace {

// Where first and last unit of the needle stand at their distance, the needle is likely. Looking
// for both, many positions at a time, is fast on ordinary text, but on repetitive text nearly
// every position is such a candidate, and comparing each is quadratic. So the candidates that
// failed are paid from a budget that grows with the way covered; when it is spent, the rest is left
// to the two-way algorithm of Crochemore and Perrin, which needs no memory and is linear, though
// slower on ordinary text.
class CandidateBudget {
public:
    /// A candidate at `position` that matched over `matched` units has failed; false when that was
    /// too much.
    bool pay(int position, int matched) noexcept {
        spent_ += matched + candidateCost;
        return spent_ <= std::int64_t(position) * 4 + 1024;
    }

private:
    static constexpr int candidateCost = 16;
    std::int64_t spent_ = 0;
};

/// A run of units read from its start ...
struct Forward {
    const unsigned short* first;
    unsigned short operator[](int index) const noexcept { return first[index]; }
};

/// ... or from its end, so that the first match in it is the last one in the text.
struct Backward {
    const unsigned short* last;
    unsigned short operator[](int index) const noexcept { return last[-index]; }
};

struct Factorization {
    int position; ///< The needle is cut here.
    int period;
};

/// The lexicographically largest suffix of the needle, by the order `isBefore`, and its period.
template <class View, class Order>
Factorization largestSuffix(View needle, int count, Order isBefore) noexcept {
    int suffix = -1;
    int candidate = 0;
    int offset = 1;
    int period = 1;
    while (candidate + offset < count) {
        const unsigned short a = needle[candidate + offset];
        const unsigned short b = needle[suffix + offset];
        if (isBefore(a, b)) {
            candidate += offset;
            offset = 1;
            period = candidate - suffix;
        } else if (a != b) {
            suffix = candidate++;
            offset = period = 1;
        } else if (offset != period) {
            ++offset;
        } else {
            candidate += period;
            offset = 1;
        }
    }
    return {suffix + 1, period};
}

template <class View>
Factorization criticalFactorization(View needle, int count) noexcept {
    const auto up = largestSuffix(needle, count, std::less<>());
    const auto down = largestSuffix(needle, count, std::greater<>());
    return up.position > down.position ? up : down;
}

template <class View>
bool isPeriodic(View needle, Factorization cut) noexcept {
    for (int i = 0; i < cut.position; ++i) {
        if (needle[i] != needle[i + cut.period]) return false;
    }
    return true;
}

/// The needle's part behind the cut is compared first, from the cut to the right; then the part
/// before it, from the cut to the left. `known` units at the needle's start need no second look
/// after a shift by the period.
template <class View>
int findTwoWay(View text, int length, View needle, int count, int position) noexcept {
    Factorization cut = criticalFactorization(needle, count);
    const bool periodic = isPeriodic(needle, cut);
    if (!periodic) cut.period = std::max(cut.position, count - cut.position) + 1;
    int known = 0;
    while (position <= length - count) {
        int i = std::max(cut.position, known);
        while (i < count && needle[i] == text[position + i]) {
            ++i;
        }
        if (i < count) {
            position += i - cut.position + 1;
            known = 0;
            continue;
        }
        i = cut.position - 1;
        while (i >= known && needle[i] == text[position + i]) {
            --i;
        }
        if (i < known) return position;
        position += cut.period;
        known = periodic ? count - cut.period : 0;
    }
    return -1;
}

/// The candidates among eight positions; `last` is the distance from the needle's first to its last
/// unit.
UnitBlock candidates(const unsigned short* text, int last, UnitBlock firstUnit,
                     UnitBlock lastUnit) noexcept {
    return (UnitBlock::load(text) == firstUnit) & (UnitBlock::load(text + last) == lastUnit);
}

} // namespace

int findText(const unsigned short* text, int length, const unsigned short* needle,
             int needleLength) noexcept {
    if (needleLength == 1) return findUnit(text, length, needle[0]);
    const int last = needleLength - 1;
    const int positions = length - last;
    const UnitBlock firstUnit = UnitBlock::of(needle[0]);
    const UnitBlock lastUnit = UnitBlock::of(needle[last]);
    CandidateBudget budget;
    int i = 0;
    constexpr int step = UnitBlock::size;
    for (; positions - i >= 2 * step; i += 2 * step) {
        const UnitBlock low = candidates(text + i, last, firstUnit, lastUnit);
        const UnitBlock high = candidates(text + i + step, last, firstUnit, lastUnit);
        if ((low | high).mask() == 0) continue;
        std::uint32_t mask = low.mask() | high.mask() << 16;
        while (mask != 0) {
            const int bit = std::countr_zero(mask);
            const int position = i + bit / 2;
            const int matched = mismatch(text + position, needle, needleLength);
            if (matched == needleLength) return position;
            if (!budget.pay(position, matched)) {
                return findTwoWay(Forward{text}, length, Forward{needle}, needleLength,
                                  position + 1);
            }
            mask &= ~(3U << bit);
        }
    }
    for (; i < positions; ++i) {
        if (text[i] == needle[0] && mismatch(text + i, needle, needleLength) == needleLength)
            return i;
    }
    return -1;
}

int findLastText(const unsigned short* text, int length, const unsigned short* needle,
                 int needleLength) noexcept {
    const int last = needleLength - 1;
    CandidateBudget budget;
    for (int i = length - needleLength; i >= 0; --i) {
        if (text[i] != needle[0] || text[i + last] != needle[last]) continue;
        const int matched = mismatch(text + i, needle, needleLength);
        if (matched == needleLength) return i;
        if (!budget.pay(length - needleLength - i, matched)) {
            const int found = findTwoWay(Backward{text + i + last - 1}, i + last,
                                         Backward{needle + last}, needleLength, 0);
            return found < 0 ? -1 : i + last - found - needleLength;
        }
    }
    return -1;
}

} // namespace KrCore
