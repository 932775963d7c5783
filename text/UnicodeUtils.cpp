#include <krcore/text/UnicodeUtils.h>

#include "text/CaseMapping.h"
#include "text/CaseTables.h"

#include <climits>

namespace KrCore {

namespace {

constexpr int noLimit = INT_MAX;

constexpr unsigned short dashes[] = {
    0x002D, 0x058A, 0x1806, 0x2010, 0x2011, 0x2012, 0x2013, 0x2014, 0x2015,
    0x301C, 0x3030, 0x30A0, 0xFE31, 0xFE32, 0xFE58, 0xFE63, 0xFF0D,
};

unsigned char propertiesOf(unsigned short unit) {
    for (const PropertyRange& range : propertyRanges) {
        if (unit < range.first || unit > range.last) continue;
        return range.properties ? range.properties[unit - range.first]
                                : UnitProperty::symbolStart | UnitProperty::symbolChar;
    }
    return 0;
}

bool hasProperty(unsigned short unit, unsigned char property) {
    return (propertiesOf(unit) & property) != 0;
}

int caseClassOf(unsigned short unit) { return propertiesOf(unit) & UnitProperty::caseClassMask; }

bool isDigit(unsigned short unit) { return unit >= '0' && unit <= '9'; }

int sameUnit(unsigned short unit) { return unit; }
int sameByte(char byte) { return static_cast<unsigned char>(byte); }
int upperUnit(unsigned short unit) { return foldUpper(unit); }
int upperByte(char byte) { return byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : sameByte(byte); }

/// Compares at most `count` positions, each side seen through its own mapping.
template <auto mapUnit, auto mapByte>
int compareMixed(const unsigned short* text, const char* bytes, int count) {
    constexpr unsigned short noUnits[] = {0};
    if (!text) text = noUnits;
    if (!bytes) bytes = "";
    for (; count > 0; --count, ++text, ++bytes) {
        const int difference = mapUnit(*text) - mapByte(*bytes);
        if (difference != 0 || *text == 0) return difference;
    }
    return 0;
}

} // namespace

bool UnicodeUtils::isWS(unsigned short unit) { return hasProperty(unit, UnitProperty::whiteSpace); }

bool UnicodeUtils::isCf(unsigned short unit) { return hasProperty(unit, UnitProperty::format); }

bool UnicodeUtils::isPd(unsigned short unit) {
    for (const unsigned short dash : dashes) {
        if (unit == dash) return true;
    }
    return false;
}

bool UnicodeUtils::isSymbolStart(unsigned short unit) {
    return hasProperty(unit, UnitProperty::symbolStart);
}

bool UnicodeUtils::isSymbolChar(unsigned short unit) {
    return hasProperty(unit, UnitProperty::symbolChar);
}

bool UnicodeUtils::iswalpha(unsigned short unit) { return caseClassOf(unit) != 0; }

bool UnicodeUtils::iswalnum(unsigned short unit) { return isDigit(unit) || iswalpha(unit); }

// Kept: irregular units are upper and lower case at once, since their class does not tell which.
// Held by UnicodeUtils.IrregularUnitsAreUpperAndLowerCase.
bool UnicodeUtils::iswupper(unsigned short unit) {
    const int caseClass = caseClassOf(unit);
    return (caseClass >= upperCaseClasses.first && caseClass <= upperCaseClasses.last) ||
           caseClass == irregularCaseClass;
}

bool UnicodeUtils::iswlower(unsigned short unit) {
    return caseClassOf(unit) >= lowerCaseClasses.first;
}

unsigned short UnicodeUtils::towlower(unsigned short unit) { return foldLower(unit); }

unsigned short UnicodeUtils::towupper(unsigned short unit) { return foldUpper(unit); }

int UnicodeUtils::watol(const unsigned short* text) {
    if (!text) return 0;
    while (isWS(*text))
        ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+') ++text;
    unsigned int value = 0; // Unsigned, so that it wraps.
    for (; isDigit(*text); ++text)
        value = value * 10 + (*text - '0');
    return static_cast<int>(negative ? 0 - value : value);
}

int UnicodeUtils::wcscmpmb(const unsigned short* text, const char* bytes) {
    return compareMixed<sameUnit, sameByte>(text, bytes, noLimit);
}

int UnicodeUtils::wcsncmpmb(const unsigned short* text, const char* bytes, int count) {
    return compareMixed<sameUnit, sameByte>(text, bytes, count);
}

int UnicodeUtils::wcsicmpmb(const unsigned short* text, const char* bytes) {
    return compareMixed<upperUnit, upperByte>(text, bytes, noLimit);
}

int UnicodeUtils::wcsnicmpmb(const unsigned short* text, const char* bytes, int count) {
    return compareMixed<upperUnit, upperByte>(text, bytes, count);
}

} // namespace KrCore
