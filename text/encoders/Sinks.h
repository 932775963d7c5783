#pragma once

#include <bit>
#include <climits>
#include <cstddef>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace KrCore {

// Where a conversion puts its output. The writers fill the caller's buffer, the counters only
// measure; a conversion is written once, as a template over them.

constexpr int blockSize = 16;

/// Writes units into a buffer of a given capacity.
class UnitWriter {
public:
    UnitWriter(unsigned short* out, int capacity)
        : begin_(out), next_(out), end_(out + (capacity > 0 ? capacity : 0)) {}

    int room() const { return static_cast<int>(end_ - next_); }
    int written() const { return static_cast<int>(next_ - begin_); }
    void put(unsigned short unit) { *next_++ = unit; }
    void put(const unsigned short* units, int count) {
        std::memcpy(next_, units, static_cast<std::size_t>(count) * sizeof *units);
        next_ += count;
    }

    /// Widens a whole block and keeps the first `count` units of it; needs room for the block.
    void putWidened(const unsigned char* bytes, int count) {
#if defined(__SSE2__)
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
        const __m128i zero = _mm_setzero_si128();
        auto* out = reinterpret_cast<__m128i*>(next_);
        _mm_storeu_si128(out, _mm_unpacklo_epi8(block, zero));
        _mm_storeu_si128(out + 1, _mm_unpackhi_epi8(block, zero));
#else
        for (int i = 0; i < blockSize; ++i)
            next_[i] = bytes[i];
#endif
        next_ += count;
    }

    /// Replaces what was written `back` places before the end.
    void replace(int back, unsigned short unit) { *(next_ - back) = unit; }

    /// The buffer behind what was written, for a system call to fill; then `advance`.
    unsigned short* buffer() { return next_; }
    void advance(int count) { next_ += count; }

private:
    unsigned short* begin_;
    unsigned short* next_;
    unsigned short* end_;
};

/// Writes bytes into a buffer of a given capacity.
class ByteWriter {
public:
    ByteWriter(char* out, int capacity)
        : begin_(out), next_(out), end_(out + (capacity > 0 ? capacity : 0)) {}

    int room() const { return static_cast<int>(end_ - next_); }
    int written() const { return static_cast<int>(next_ - begin_); }
    void put(unsigned int byte) { *next_++ = static_cast<char>(byte); }
    void put(const char* bytes, int count) {
        std::memcpy(next_, bytes, static_cast<std::size_t>(count));
        next_ += count;
    }

    /// Writes the first `count` of four bytes, the lowest first; needs room for all four.
    void putWord(unsigned int word, int count) {
        if constexpr (std::endian::native == std::endian::big) word = swapped(word);
        std::memcpy(next_, &word, sizeof word);
        next_ += count;
    }

    /// Narrows a whole block of units and keeps the first `count` bytes of it; needs room for the
    /// block. A unit above 255 leaves an undefined byte.
    void putNarrowed(const unsigned short* units, int count) {
#if defined(__SSE2__)
        const auto* in = reinterpret_cast<const __m128i*>(units);
        const __m128i packed = _mm_packus_epi16(_mm_loadu_si128(in), _mm_loadu_si128(in + 1));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(next_), packed);
#else
        for (int i = 0; i < blockSize; ++i)
            next_[i] = static_cast<char>(units[i]);
#endif
        next_ += count;
    }

    void replace(int back, unsigned int byte) { *(next_ - back) = static_cast<char>(byte); }

    char* buffer() { return next_; }
    void advance(int count) { next_ += count; }

private:
    static constexpr unsigned int swapped(unsigned int word) {
        return word >> 24 | (word >> 8 & 0xFF00) | (word << 8 & 0xFF0000) | word << 24;
    }

    char* begin_;
    char* next_;
    char* end_;
};

/// Counts what a writer would write. Ends, as if the buffer were full, before the count overflows.
template <class Element>
class Counter {
public:
    int room() const { return INT_MAX - count_; }
    int written() const { return count_; }
    void put(unsigned int) { ++count_; }
    void put(const Element*, int count) { count_ += count; }
    void putWord(unsigned int, int count) { count_ += count; }
    void putWidened(const unsigned char*, int count) { count_ += count; }
    void putNarrowed(const unsigned short*, int count) { count_ += count; }
    void replace(int, unsigned int) {}
    Element* buffer() { return nullptr; }
    void advance(int count) { count_ += count; }

private:
    int count_ = 0;
};

using UnitCounter = Counter<unsigned short>;
using ByteCounter = Counter<char>;

} // namespace KrCore
