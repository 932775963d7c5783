#include "text/Units.h"

#include "text/UnitBlock.h"

#include <bit>

namespace KrCore {

void widenBytes(unsigned short* out, const char* bytes, int count) noexcept {
    constexpr int step = 2 * UnitBlock::size;
    int i = 0;
    for (; count - i >= step; i += step) {
        UnitBlock::widen(out + i, bytes + i);
    }
    for (; i < count; ++i) {
        out[i] = static_cast<unsigned char>(bytes[i]);
    }
}

int countUnits(const unsigned short* text, int limit) noexcept {
    int count = 0;
    while (count < limit && text[count] != 0) {
        ++count;
    }
    return count;
}

int countBytes(const char* text, int limit) noexcept {
    const void* end = std::memchr(text, 0, static_cast<std::size_t>(limit));
    return end ? static_cast<int>(static_cast<const char*>(end) - text) : limit;
}

int mismatch(const unsigned short* a, const unsigned short* b, int count) noexcept {
    constexpr int step = UnitBlock::size;
    // The system's memory comparison is the faster the longer the run; it only does not tell where.
    constexpr int longRun = 128;
    int i = 0;
    while (count - i >= longRun && std::memcmp(a + i, b + i, longRun * sizeof *a) == 0) {
        i += longRun;
    }
    for (; count - i >= 2 * step; i += 2 * step) {
        const UnitBlock low = UnitBlock::load(a + i) == UnitBlock::load(b + i);
        const UnitBlock high = UnitBlock::load(a + i + step) == UnitBlock::load(b + i + step);
        if ((low & high).mask() == UnitBlock::allUnits) continue;
        const std::uint32_t equal = low.mask() | high.mask() << 16;
        return i + std::countr_one(equal) / 2;
    }
    while (i < count && a[i] == b[i]) {
        ++i;
    }
    return i;
}

int findUnit(const unsigned short* text, int count, unsigned short unit) noexcept {
    constexpr int step = UnitBlock::size;
    const UnitBlock wanted = UnitBlock::of(unit);
    int i = 0;
    for (; count - i >= 4 * step; i += 4 * step) {
        const UnitBlock a = UnitBlock::load(text + i) == wanted;
        const UnitBlock b = UnitBlock::load(text + i + step) == wanted;
        const UnitBlock c = UnitBlock::load(text + i + 2 * step) == wanted;
        const UnitBlock d = UnitBlock::load(text + i + 3 * step) == wanted;
        if (((a | b) | (c | d)).mask() == 0) continue;
        const std::uint64_t low = a.mask() | b.mask() << 16;
        const std::uint64_t high = c.mask() | d.mask() << 16;
        return i + std::countr_zero(low | high << 32) / 2;
    }
    for (; i < count; ++i) {
        if (text[i] == unit) return i;
    }
    return -1;
}

std::int64_t countUtf32(const unsigned int* text) noexcept {
    std::int64_t count = 0;
    while (text[count] != 0) {
        ++count;
    }
    return count;
}

std::int64_t utf16Length(const unsigned int* text, std::int64_t count) noexcept {
    std::int64_t length = count;
    for (std::int64_t i = 0; i < count; ++i) {
        if (text[i] >= 0x10000 && text[i] <= 0x10FFFF) ++length;
    }
    return length;
}

void encodeUtf16(unsigned short* out, const unsigned int* text, std::int64_t count) noexcept {
    for (std::int64_t i = 0; i < count; ++i) {
        out += putCodePoint(out, text[i]);
    }
}

} // namespace KrCore
