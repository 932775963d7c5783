#pragma once

#include "text/encoders/Sinks.h"

#include <bit>
#include <cstdint>

namespace KrCore {

// How many elements at the front of a block of 16 are the same in both directions, so that whole
// blocks can be widened and narrowed without looking at each character.

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

template <Identity identity>
inline int identicalBytes(const unsigned char* block) {
    if constexpr (identity == Identity::None) return 0;
    if constexpr (identity == Identity::All) return blockSize;
#if defined(__SSE2__)
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    std::uint32_t others = 0;
    if constexpr (identity == Identity::Ascii) {
        others = static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
    } else {
        const __m128i row = _mm_and_si128(bytes, _mm_set1_epi8(static_cast<char>(0xE0)));
        const __m128i control = _mm_cmpeq_epi8(row, _mm_set1_epi8(static_cast<char>(0x80)));
        others = static_cast<std::uint32_t>(_mm_movemask_epi8(control));
    }
    return others ? std::countr_zero(others) : blockSize;
#else
    int count = 0;
    while (count < blockSize && isIdentical<identity>(block[count]))
        ++count;
    return count;
#endif
}

template <Identity identity>
inline int identicalUnits(const unsigned short* block) {
    if constexpr (identity == Identity::None) return 0;
#if defined(__SSE2__)
    const auto good = [](__m128i units) {
        const __m128i zero = _mm_setzero_si128();
        if constexpr (identity != Identity::AllButControls) {
            constexpr int foreign = identity == Identity::Ascii ? 0xFF80 : 0xFF00;
            return _mm_cmpeq_epi16(
                _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(foreign))), zero);
        } else {
            const __m128i high = _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(0xFF00)));
            const __m128i row = _mm_and_si128(units, _mm_set1_epi16(0x00E0));
            const __m128i control = _mm_cmpeq_epi16(row, _mm_set1_epi16(0x0080));
            return _mm_andnot_si128(control, _mm_cmpeq_epi16(high, zero));
        }
    };
    const auto* in = reinterpret_cast<const __m128i*>(block);
    const __m128i packed =
        _mm_packs_epi16(good(_mm_loadu_si128(in)), good(_mm_loadu_si128(in + 1)));
    const std::uint32_t others = ~static_cast<std::uint32_t>(_mm_movemask_epi8(packed)) & 0xFFFFU;
    return others ? std::countr_zero(others) : blockSize;
#else
    int count = 0;
    while (count < blockSize && isIdentical<identity>(block[count]))
        ++count;
    return count;
#endif
}

} // namespace KrCore
