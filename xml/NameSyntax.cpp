#include "xml/NameSyntax.h"

#include <krcore/text/UnicodeUtils.h>
#include <krcore/xml/XML.h>

#include <algorithm>

namespace KrCore {

namespace {

/// The zeros of the decimal digits (general category Nd) in the Basic Multilingual Plane of Unicode
/// 5.0; the nine other digits follow each.
constexpr unsigned short zeros[] = {
    0x0030, 0x0660, 0x06F0, 0x07C0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0BE6, 0x0C66, 0x0CE6,
    0x0D66, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x17E0, 0x1810, 0x1946, 0x19D0, 0x1B50, 0xFF10,
};

bool isDecimalDigit(unsigned short unit) {
    const unsigned short* above = std::upper_bound(std::begin(zeros), std::end(zeros), unit);
    return above != std::begin(zeros) && unit - above[-1] < 10;
}

// "$" and "@" belong to identifiers of scripts, not to names of XML.
bool mayStart(unsigned short unit) {
    return unit != '$' && unit != '@' && UnicodeUtils::isSymbolStart(unit);
}

bool mayFollow(unsigned short unit) {
    if (unit == '-' || unit == '.') return true;
    if (unit == '$' || unit == '@') return false;
    return UnicodeUtils::isSymbolChar(unit) || isDecimalDigit(unit);
}

} // namespace

int nameLength(UnitRange text) {
    if (text.isEmpty() || !mayStart(*text.begin)) return 0;
    return static_cast<int>(std::find_if_not(text.begin + 1, text.end, mayFollow) - text.begin);
}

bool XML::checkSymbolSyntax(const String& name) {
    return !name.isEmpty() && nameLength({name.begin(), name.end()}) == name.length();
}

} // namespace KrCore
