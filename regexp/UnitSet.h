#pragma once

#include <krcore/foundation/Heap.h>

#include <cstdint>

namespace KrCore {

/// A run of units, both ends included.
struct UnitRange {
    unsigned short first;
    unsigned short last;
};

/// A set of 16-bit units: a bit for each below 256, sorted ranges for the others. A set takes no
/// more memory than the text that describes it, where a bit for every unit would take 8192 bytes.
class UnitSet {
public:
    static constexpr unsigned lowCount = 256;
    static constexpr unsigned lowWords = lowCount / 32;

    constexpr UnitSet() = default;
    UnitSet(const UnitSet&) = delete;
    UnitSet& operator=(const UnitSet&) = delete;
    ~UnitSet() { Heap::operator delete(ranges_); }

    /// Fills an empty set. The ranges are sorted, and there are gaps between them.
    void assign(const UnitRange* ranges, int count);

    bool contains(unsigned short unit) const {
        return unit < lowCount ? hasLow(unit) : containsHigh(unit);
    }
    /// 32 of the bits; the lowest is that of unit 32 * `word`.
    std::uint32_t lowWord(unsigned word) const { return low_[word]; }
    /// Whether there is a unit beyond the bits.
    bool hasHigh() const { return rangeCount_ > 0; }

private:
    bool hasLow(unsigned unit) const { return (low_[unit >> 5U] >> (unit & 31U) & 1U) != 0; }
    void addLow(unsigned first, unsigned last);
    bool containsHigh(unsigned short unit) const;

    std::uint32_t low_[lowWords] = {};
    UnitRange* ranges_ = nullptr; // owned
    int rangeCount_ = 0;
};

} // namespace KrCore
