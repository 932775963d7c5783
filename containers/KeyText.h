#pragma once

#include <krcore/text/String.h>
#include <krcore/text/UnicodeUtils.h>

#include <cstdint>
#include <cstring>

namespace KrCore::KeyText {

// Hashing and comparing of hash-table keys, four units at a time in one 64-bit word. Case is folded
// by `UnicodeUtils::towupper`, with a short cut for ASCII, so that the hashes agree with
// `String::ucmp`: keys that are equal without case have equal hashes.

inline constexpr std::uint64_t everyUnit = 0x0001000100010001U;

inline std::uint64_t loadFour(const unsigned short* units) {
    std::uint64_t word;
    std::memcpy(&word, units, sizeof word);
    return word;
}

/// One to three units; every unit is in the word, some of them twice.
inline std::uint64_t loadFew(const unsigned short* units, unsigned int count) {
    return units[0] | static_cast<std::uint64_t>(units[count / 2]) << 16 |
           static_cast<std::uint64_t>(units[count - 1]) << 32;
}

inline unsigned short foldUnit(unsigned short unit) {
    if (unit < 0x80) {
        return static_cast<unsigned short>(unit >= 'a' && unit <= 'z' ? unit - 32 : unit);
    }
    return UnicodeUtils::towupper(unit);
}

inline bool isAscii(std::uint64_t word) { return (word & everyUnit * 0xFF80) == 0; }

/// `foldFour` for words that are ASCII throughout.
inline std::uint64_t foldAscii(std::uint64_t word) {
    // Bit 7 of a unit becomes set when it is at least "a", and when it is beyond "z".
    const std::uint64_t fromA = word + everyUnit * (0x80 - 'a');
    const std::uint64_t beyondZ = word + everyUnit * (0x80 - 'z' - 1);
    return word - ((fromA & ~beyondZ & everyUnit * 0x80) >> 2);
}

/// `foldFour` for words with a unit beyond ASCII.
std::uint64_t foldUncommon(std::uint64_t word);

inline std::uint64_t foldFour(std::uint64_t word) {
    return isAscii(word) ? foldAscii(word) : foldUncommon(word);
}

/// Kept: the bucket hash looks at five units at most and ends at a zero unit, so keys with a common
/// beginning share a chain. The order of iteration hangs on it (held by
/// HashTable.ChainsByItsShortHash).
inline std::uint32_t shortHash(const String& key) {
    const unsigned short* units = key.wstr();
    const int count = key.length() < 5 ? key.length() : 5;
    std::uint32_t hash = 0;
    for (int index = 0; index < count && units[index] != 0; ++index) {
        hash = hash * 2 + foldUnit(units[index]);
    }
    return hash;
}

/// Both halves of the full product, so that every bit of a word reaches every bit of the hash.
inline std::uint64_t mix(std::uint64_t hash, std::uint64_t word) {
    __extension__ using Product = unsigned __int128;
    const Product product = static_cast<Product>(hash ^ word) * 0x9E3779B97F4A7C15U;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// Over all units. The last word overlaps the one before when the length is no multiple of four.
template <class Fold>
inline std::uint32_t hashFolded(const String& key, Fold&& fold) {
    const unsigned short* units = key.wstr();
    const int count = key.length();
    auto hash = static_cast<std::uint64_t>(count);
    if (count >= 4) {
        for (int index = 0; index < count - 4; index += 4) {
            hash = mix(hash, fold(loadFour(units + index)));
        }
        hash = mix(hash, fold(loadFour(units + count - 4)));
    } else if (count > 0) {
        hash = mix(hash, fold(loadFew(units, count)));
    }
    return static_cast<std::uint32_t>(hash);
}

/// `fullHash` for keys with a unit beyond ASCII.
std::uint32_t uncommonHash(const String& key);

/// Over the whole key without case. Any key is taken for ASCII at first: with one question at the
/// end, nothing interrupts the loop.
inline std::uint32_t fullHash(const String& key) {
    std::uint64_t seen = 0;
    const std::uint32_t hash = hashFolded(key, [&seen](std::uint64_t word) {
        seen |= word;
        return foldAscii(word);
    });
    return isAscii(seen) ? hash : uncommonHash(key);
}

inline bool equalExactly(const String& left, const String& right) {
    const int count = left.length();
    if (count != right.length()) return false;
    const unsigned short* a = left.wstr();
    const unsigned short* b = right.wstr();
    if (a == b) return true;
    if (count >= 4) {
        for (int index = 0; index < count - 4; index += 4) {
            if (loadFour(a + index) != loadFour(b + index)) return false;
        }
        return loadFour(a + count - 4) == loadFour(b + count - 4);
    }
    return count == 0 || loadFew(a, count) == loadFew(b, count);
}

inline bool equalWithoutCase(const String& left, const String& right) {
    const int count = left.length();
    if (count != right.length()) return false;
    const unsigned short* a = left.wstr();
    const unsigned short* b = right.wstr();
    const auto equalFour = [](std::uint64_t x, std::uint64_t y) {
        return x == y || foldFour(x) == foldFour(y);
    };
    if (count >= 4) {
        for (int index = 0; index < count - 4; index += 4) {
            if (!equalFour(loadFour(a + index), loadFour(b + index))) return false;
        }
        return equalFour(loadFour(a + count - 4), loadFour(b + count - 4));
    }
    return count == 0 || equalFour(loadFew(a, count), loadFew(b, count));
}

inline bool equal(const String& left, const String& right, bool ignoreCase) {
    return ignoreCase ? equalWithoutCase(left, right) : equalExactly(left, right);
}

} // namespace KrCore::KeyText
