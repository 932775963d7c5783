#pragma once

#include "xml/BlankUnits.h"

#include <cstdint>
#include <cstring>

namespace KrCore {

inline bool isSameText(const String& text, UnitRange other) noexcept {
    return text.length() == other.length() &&
           std::memcmp(text.begin(), other.begin, std::size_t(text.length()) * 2) == 0;
}

std::uint32_t hashOf(UnitRange text) noexcept;

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
