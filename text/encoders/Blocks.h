#pragma once

#include "text/encoders/CodecEncoder.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace KrCore {

// Most characters of most texts have the same value on both sides. These functions find them in
// blocks of 16, which are then widened or narrowed as a whole.

/// Which bytes stand for the unit of the same value.
enum class Identity {
    None,
    Ascii,          ///< 00 to 7F
    AllButControls, ///< All but 80 to 9F
    All
};

template <Identity identity>
constexpr bool isIdentical(unsigned int value) {
    switch (identity) {
    case Identity::None:
        return false;
    case Identity::Ascii:
        return value < 0x80;
    case Identity::AllButControls:
        return value < 0x80 || (value >= 0xA0 && value < 0x100);
    case Identity::All:
        return value < 0x100;
    }
    return false;
}

/// One bit for each byte of a block that does not stand for itself, the first byte in the lowest.
template <Identity identity>
inline std::uint32_t foreignBytes(const unsigned char* block) {
    if constexpr (identity == Identity::None) return 0xFFFF;
    if constexpr (identity == Identity::All) return 0;
#if defined(__SSE2__)
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    if constexpr (identity == Identity::Ascii) {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
    } else {
        const __m128i row = _mm_and_si128(bytes, _mm_set1_epi8(static_cast<char>(0xE0)));
        const __m128i control = _mm_cmpeq_epi8(row, _mm_set1_epi8(static_cast<char>(0x80)));
        return static_cast<std::uint32_t>(_mm_movemask_epi8(control));
    }
#else
    std::uint32_t mask = 0;
    for (int i = 0; i < blockSize; ++i)
        mask |= isIdentical<identity>(block[i]) ? 0U : 1U << i;
    return mask;
#endif
}

/// The same for the units of a block.
template <Identity identity>
inline std::uint32_t foreignUnits(const unsigned short* block) {
    if constexpr (identity == Identity::None) return 0xFFFF;
#if defined(__SSE2__)
    const auto* in = reinterpret_cast<const __m128i*>(block);
    const __m128i first = _mm_loadu_si128(in);
    const __m128i second = _mm_loadu_si128(in + 1);
    const __m128i zero = _mm_setzero_si128();
    constexpr int foreign = identity == Identity::Ascii ? 0xFF80 : 0xFF00;
    const __m128i foreignBits = _mm_set1_epi16(static_cast<short>(foreign));
    if constexpr (identity != Identity::AllButControls) {
        // Most blocks have nothing foreign: one test for both halves.
        const __m128i both = _mm_and_si128(_mm_or_si128(first, second), foreignBits);
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(both, zero)) == 0xFFFF) return 0;
    }
    const auto identical = [&](__m128i units) {
        const __m128i known = _mm_cmpeq_epi16(_mm_and_si128(units, foreignBits), zero);
        if constexpr (identity != Identity::AllButControls) return known;
        const __m128i row = _mm_and_si128(units, _mm_set1_epi16(0x00E0));
        return _mm_andnot_si128(_mm_cmpeq_epi16(row, _mm_set1_epi16(0x0080)), known);
    };
    const __m128i packed = _mm_packs_epi16(identical(first), identical(second));
    return ~static_cast<std::uint32_t>(_mm_movemask_epi8(packed)) & 0xFFFFU;
#else
    std::uint32_t mask = 0;
    for (int i = 0; i < blockSize; ++i)
        mask |= isIdentical<identity>(block[i]) ? 0U : 1U << i;
    return mask;
#endif
}

/// How many elements of a block come before the first foreign one.
inline int identicalCount(std::uint32_t foreignMask) {
    return foreignMask ? std::countr_zero(foreignMask) : blockSize;
}

/// Copies whole groups of blocks without foreign bytes: long stretches of them go twice as fast.
template <Identity identity, class Sink>
void copyGroups(ByteSource& in, Sink& out) {
    constexpr int groupSize = 4 * blockSize;
    while (in.remaining() >= groupSize && out.room() >= groupSize) {
        const unsigned char* bytes = in.next;
        if (foreignBytes<identity>(bytes) | foreignBytes<identity>(bytes + blockSize) |
            foreignBytes<identity>(bytes + 2 * blockSize) |
            foreignBytes<identity>(bytes + 3 * blockSize))
            return;
        for (int i = 0; i < groupSize; i += blockSize)
            out.putWidened(bytes + i, blockSize);
        in.next += groupSize;
    }
}

template <Identity identity, class Sink>
void copyGroups(UnitSource& in, Sink& out) {
    constexpr int groupSize = 2 * blockSize;
    while (in.remaining() >= groupSize && out.room() >= groupSize) {
        const unsigned short* units = in.next;
        if (foreignUnits<identity>(units) | foreignUnits<identity>(units + blockSize)) return;
        out.putNarrowed(units, blockSize);
        out.putNarrowed(units + blockSize, blockSize);
        in.next += groupSize;
    }
}

/// Runs one conversion on copies of its two ends, which the compiler can keep in registers.
template <class Input, class Sink, class Work>
Stop onCopies(Input& source, Sink& sink, Work work) {
    Input in = source;
    Sink out = sink;
    const Stop stop = work(in, out);
    source = in;
    sink = out;
    return stop;
}

/// Copies the ASCII characters at the front of `source`, as many as there is room for.
template <class Sink>
void copyAscii(ByteSource& source, Sink& sink) {
    ByteSource in = source; // Copies that the compiler can keep in registers.
    Sink out = sink;
    for (int blocks = std::min(in.remaining(), out.room()) / blockSize; blocks > 0; --blocks) {
        const std::uint32_t foreign = foreignBytes<Identity::Ascii>(in.next);
        const int count = identicalCount(foreign);
        out.putWidened(in.next, count);
        in.next += count;
        if (foreign) break;
    }
    while (!in.isEmpty() && *in.next < 0x80 && out.room() > 0)
        out.put(*in.next++);
    source = in;
    sink = out;
}

template <class Sink>
void copyAscii(UnitSource& source, Sink& sink) {
    UnitSource in = source;
    Sink out = sink;
    for (int blocks = std::min(in.remaining(), out.room()) / blockSize; blocks > 0; --blocks) {
        const std::uint32_t foreign = foreignUnits<Identity::Ascii>(in.next);
        const int count = identicalCount(foreign);
        out.putNarrowed(in.next, count);
        in.next += count;
        if (foreign) break;
    }
    while (!in.isEmpty() && *in.next < 0x80 && out.room() > 0)
        out.put(*in.next++);
    source = in;
    sink = out;
}

} // namespace KrCore
