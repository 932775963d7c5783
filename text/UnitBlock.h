#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace KrCore {

/// Eight units that are compared in one step. Results are masks of two bits for each unit, the
/// lowest for the first one: `std::countr_zero(mask) / 2` is the first unit that answers.
class UnitBlock {
public:
    static constexpr int size = 8;
    static constexpr std::uint32_t allUnits = 0xFFFF;

#if defined(__SSE2__)
    static UnitBlock load(const unsigned short* units) noexcept {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    }
    void store(unsigned short* units) const noexcept {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(units), units_);
    }
    static UnitBlock of(unsigned short unit) noexcept {
        return _mm_set1_epi16(static_cast<short>(unit));
    }
    /// All bits of the units that are equal, none of the others.
    UnitBlock operator==(UnitBlock other) const noexcept {
        return _mm_cmpeq_epi16(units_, other.units_);
    }
    UnitBlock operator&(UnitBlock other) const noexcept {
        return _mm_and_si128(units_, other.units_);
    }
    UnitBlock operator|(UnitBlock other) const noexcept {
        return _mm_or_si128(units_, other.units_);
    }
    std::uint32_t mask() const noexcept {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(units_));
    }

    /// Sixteen bytes become sixteen units.
    static void widen(unsigned short* out, const char* bytes) noexcept {
        const __m128i narrow = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
        const __m128i zero = _mm_setzero_si128();
        auto* blocks = reinterpret_cast<__m128i*>(out);
        _mm_storeu_si128(blocks, _mm_unpacklo_epi8(narrow, zero));
        _mm_storeu_si128(blocks + 1, _mm_unpackhi_epi8(narrow, zero));
    }

private:
    UnitBlock(__m128i units) noexcept : units_(units) {}
    __m128i units_;
#else
    static UnitBlock load(const unsigned short* units) noexcept {
        UnitBlock block;
        for (int i = 0; i < size; ++i)
            block.units_[i] = units[i];
        return block;
    }
    void store(unsigned short* units) const noexcept {
        for (int i = 0; i < size; ++i)
            units[i] = units_[i];
    }
    static UnitBlock of(unsigned short unit) noexcept {
        UnitBlock block;
        for (unsigned short& each : block.units_)
            each = unit;
        return block;
    }
    UnitBlock operator==(UnitBlock other) const noexcept {
        for (int i = 0; i < size; ++i)
            other.units_[i] = units_[i] == other.units_[i] ? 0xFFFF : 0;
        return other;
    }
    UnitBlock operator&(UnitBlock other) const noexcept {
        for (int i = 0; i < size; ++i)
            other.units_[i] &= units_[i];
        return other;
    }
    UnitBlock operator|(UnitBlock other) const noexcept {
        for (int i = 0; i < size; ++i)
            other.units_[i] |= units_[i];
        return other;
    }
    std::uint32_t mask() const noexcept {
        std::uint32_t bits = 0;
        for (int i = 0; i < size; ++i)
            bits |= (units_[i] & 3U) << (2 * i);
        return bits;
    }

    static void widen(unsigned short* out, const char* bytes) noexcept {
        for (int i = 0; i < 2 * size; ++i)
            out[i] = static_cast<unsigned char>(bytes[i]);
    }

private:
    unsigned short units_[size];
#endif
};

} // namespace KrCore
