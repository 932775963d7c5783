// Case changes, unit by unit.

#include <krcore/text/String.h>

#include "text/CaseMapping.h"
#include "text/Units.h"

namespace KrCore {

namespace {

/// Replaces each unit by `map(units, index)`, which may look at the unit in front of it as well.
/// Nothing is unshared before the first unit that changes.
template <class Map>
bool mapUnits(String& text, Map map) {
    const int length = text.length();
    const unsigned short* units = text.wstr();
    int i = 0;
    while (i < length && map(units, i) == units[i]) {
        ++i;
    }
    if (i == length) return false;
    unsigned short* own = text.writable();
    for (; i < length; ++i) {
        own[i] = map(own, i);
    }
    return true;
}

bool isSeparator(unsigned short unit) {
    return unit == ' ' || unit == ',' || unit == ';' || unit == '.';
}

} // namespace

bool String::toLower() {
    return mapUnits(*this, [](const unsigned short* units, int i) { return foldLower(units[i]); });
}

bool String::toUpper() {
    return mapUnits(*this, [](const unsigned short* units, int i) { return foldUpper(units[i]); });
}

bool String::toMixed() {
    // Separators map to themselves, so a unit in front may have been mapped already.
    return mapUnits(*this, [](const unsigned short* units, int i) {
        const unsigned short lower = foldLower(units[i]);
        return i == 0 || isSeparator(units[i - 1]) ? foldUpper(lower) : lower;
    });
}

} // namespace KrCore
