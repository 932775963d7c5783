#pragma once

#include "xml/BlankUnits.h"

#include <cstdint>
#include <cstring>

namespace KrCore {

inline bool isSameText(const String& text, UnitRange other) noexcept {
    return text.length() == other.length() &&
           std::memcmp(text.begin(), other.begin, std::size_t(text.length()) * 2) == 0;
}

/// Of the length and both ends: for small caches, where texts that differ in the middle alone may
/// well take each other's place.
inline std::uint32_t hashOf(UnitRange text) noexcept {
    constexpr int atOnce = 4;
    const int length = text.length();
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    if (length >= atOnce) {
        std::memcpy(&begin, text.begin, sizeof begin);
        std::memcpy(&end, text.end - atOnce, sizeof end);
    } else if (length > 0) {
        begin = *text.begin;
        end = text.begin[length / 2] | std::uint64_t(text.end[-1]) << 16;
    }
    const std::uint64_t mixed =
        begin * 0x9E3779B97F4A7C15 ^ end * 0xC2B2AE3D27D4EB4F ^ static_cast<std::uint64_t>(length);
    return static_cast<std::uint32_t>(mixed * 0x9E3779B97F4A7C15 >> 32);
}

/// Values that a text repeats (line ends between elements, short codes), as shared strings. Holds
/// the last one of each hash value.
class ShortTexts {
public:
    /// The text as a string; longer ones are not kept.
    String find(UnitRange text);

private:
    static constexpr int longest = 16;
    static constexpr std::uint32_t size = 256;

    String texts_[size];
};

} // namespace KrCore
