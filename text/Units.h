#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace KrCore {

// Runs of 16-bit units: the loops that String and its neighbours share. Counts are never negative.

inline void copyUnits(unsigned short* out, const unsigned short* units, int count) noexcept {
    std::memcpy(out, units, std::size_t(count) * sizeof *units);
}

/// The two runs may overlap.
inline void moveUnits(unsigned short* out, const unsigned short* units, int count) noexcept {
    std::memmove(out, units, std::size_t(count) * sizeof *units);
}

/// Each byte becomes the unit of its value 0 to 255.
void widenBytes(unsigned short* out, const char* bytes, int count) noexcept;

/// The units before the terminator, but no more than `limit`; nothing behind that is read.
int countUnits(const unsigned short* text, int limit) noexcept;
int countBytes(const char* text, int limit) noexcept;

/// The position of the first difference between two runs of `count` units; `count` without one.
int mismatch(const unsigned short* a, const unsigned short* b, int count) noexcept;

/// The first position of `unit` among `count` units, or -1.
int findUnit(const unsigned short* text, int count, unsigned short unit) noexcept;

/// UTF-32 as UTF-16. Values above U+10FFFF become U+FFFD, surrogate values stay.
std::int64_t utf16Length(const unsigned int* text, std::int64_t count) noexcept;
void encodeUtf16(unsigned short* out, const unsigned int* text, std::int64_t count) noexcept;
std::int64_t countUtf32(const unsigned int* text) noexcept;

/// Writes a code point as one or two units and returns how many.
inline int putCodePoint(unsigned short* out, unsigned int codePoint) noexcept {
    if (codePoint < 0x10000) {
        out[0] = static_cast<unsigned short>(codePoint);
        return 1;
    }
    if (codePoint > 0x10FFFF) {
        out[0] = 0xFFFD;
        return 1;
    }
    out[0] = static_cast<unsigned short>(0xD800 + ((codePoint - 0x10000) >> 10));
    out[1] = static_cast<unsigned short>(0xDC00 + (codePoint & 0x3FF));
    return 2;
}

inline bool isHighSurrogate(unsigned short unit) noexcept { return (unit & 0xFC00) == 0xD800; }
inline bool isLowSurrogate(unsigned short unit) noexcept { return (unit & 0xFC00) == 0xDC00; }

/// A surrogate pair stands at `units`.
inline bool isPair(const unsigned short* units, const unsigned short* end) noexcept {
    return isHighSurrogate(units[0]) && end - units > 1 && isLowSurrogate(units[1]);
}
inline unsigned int codePointOf(const unsigned short* pair) noexcept {
    return 0x10000U + ((pair[0] & 0x3FFU) << 10) + (pair[1] & 0x3FFU);
}

} // namespace KrCore
