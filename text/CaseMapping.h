#pragma once

/// @file
/// The case mappings of single units for the library's own loops, inlined. They are the functions
/// `UnicodeUtils::towupper` and `towlower`, as one load each from a flat, read-only table.

namespace KrCore {

/// What each of the 65,536 units maps to.
struct CaseMap {
    unsigned short mapped[65536];
};

extern const CaseMap upperCaseMap;
extern const CaseMap lowerCaseMap;

inline unsigned short foldUpper(unsigned short unit) { return upperCaseMap.mapped[unit]; }
inline unsigned short foldLower(unsigned short unit) { return lowerCaseMap.mapped[unit]; }

} // namespace KrCore
