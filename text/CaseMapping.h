#pragma once

/// @file
/// The case mappings of single units for the library's own loops: `UnicodeUtils::towupper` and
/// `towlower`, inlined, as one load each from a flat, read-only table.

namespace KrCore {

inline constexpr unsigned int caseMapSize = 65536;

/// What each unit maps to.
struct CaseMap {
    unsigned short mapped[caseMapSize];
};

extern const CaseMap upperCaseMap;
extern const CaseMap lowerCaseMap;

inline unsigned short foldUpper(unsigned short unit) { return upperCaseMap.mapped[unit]; }
inline unsigned short foldLower(unsigned short unit) { return lowerCaseMap.mapped[unit]; }

} // namespace KrCore
