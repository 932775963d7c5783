#pragma once

#include "text/CaseMapping.h"

#include <cstddef>

/// @file
/// The tables behind UnicodeUtils, generated from facts about the characters of Unicode 4.0.
///
/// Ten ranges cover what has properties at all; six of them own an array of one byte per unit,
/// 9,694 bytes in all, and the four big blocks of ideographs and syllables do without. A byte packs
/// four flags and a case class, and the class stands for a distance, so that mapped units need no
/// table of partners: only the irregular ones are listed. Questions scan the ranges; two levels of
/// index would answer no faster, since nearly all text lies in the first range. Case mapping, which
/// runs over whole texts, has its own flat tables (CaseMapping.h), which the compiler fills from
/// these.

namespace KrCore {

namespace UnitProperty {
inline constexpr unsigned char caseClassMask = 0x0F;
inline constexpr unsigned char whiteSpace = 0x10;
inline constexpr unsigned char format = 0x20;
inline constexpr unsigned char symbolStart = 0x40;
inline constexpr unsigned char symbolChar = 0x80;
} // namespace UnitProperty

/// The properties of the units `first` to `last`, or null where every unit is a letter without
/// case.
struct PropertyRange {
    unsigned short first;
    unsigned short last;
    const unsigned char* properties;
};

/// A unit of the irregular class and the distance to its partner. Title-case digraphs, which have
/// one on either side, stand in both lists.
struct CaseException {
    unsigned short unit;
    short delta;
};

struct CaseClasses {
    int first;
    int last;
};

inline constexpr int propertyRangeCount = 10;
extern const PropertyRange propertyRanges[propertyRangeCount];

inline constexpr int caseClassCount = 16;
inline constexpr CaseClasses upperCaseClasses{1, 7};
inline constexpr CaseClasses lowerCaseClasses{8, 14};
inline constexpr int irregularCaseClass = 15;

/// The distance from a unit of a class to its partner.
inline constexpr short caseDeltas[caseClassCount] = {0,  1, -8,  16,  26,  32,  48,  80,
                                                     -1, 8, -16, -26, -32, -48, -80, 0};

constexpr unsigned short moved(unsigned int unit, int delta) {
    return static_cast<unsigned short>(static_cast<int>(unit) + delta);
}

/// Maps the units of `classes` and those listed to their partners, all others to themselves.
template <std::size_t count>
constexpr CaseMap makeCaseMap(const PropertyRange (&ranges)[propertyRangeCount],
                              CaseClasses classes, const CaseException (&exceptions)[count]) {
    CaseMap map{};
    for (unsigned int unit = 0; unit < caseMapSize; ++unit)
        map.mapped[unit] = static_cast<unsigned short>(unit);
    for (const PropertyRange& range : ranges) {
        if (!range.properties) continue;
        for (unsigned int unit = range.first; unit <= range.last; ++unit) {
            const int caseClass =
                range.properties[unit - range.first] & UnitProperty::caseClassMask;
            if (caseClass < classes.first || caseClass > classes.last) continue;
            map.mapped[unit] = moved(unit, caseDeltas[caseClass]);
        }
    }
    for (const CaseException& exception : exceptions)
        map.mapped[exception.unit] = moved(exception.unit, exception.delta);
    return map;
}

} // namespace KrCore
