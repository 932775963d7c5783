#pragma once

#include <krcore/text/String.h>

namespace KrCore {

/// The four units that XML calls white space; `UnicodeUtils::isWS` knows more.
inline bool isXMLBlank(unsigned short unit) noexcept {
    return unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r';
}

/// A part of a text, borrowed.
struct UnitRange {
    const unsigned short* begin;
    const unsigned short* end;

    int length() const noexcept { return static_cast<int>(end - begin); }
    bool isEmpty() const noexcept { return begin == end; }
};

inline bool isBlank(UnitRange text) noexcept {
    while (!text.isEmpty() && isXMLBlank(*text.begin))
        ++text.begin;
    return text.isEmpty();
}

/// `text` without the XML white space at its ends.
inline UnitRange withoutBlanks(const String& text) noexcept {
    UnitRange range{text.begin(), text.end()};
    while (!range.isEmpty() && isXMLBlank(*range.begin))
        ++range.begin;
    while (!range.isEmpty() && isXMLBlank(range.end[-1]))
        --range.end;
    return range;
}

} // namespace KrCore
