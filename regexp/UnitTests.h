#pragma once

#include "text/CaseMapping.h"

namespace KrCore {

// What single units mean to a pattern.

inline bool isLineBreak(unsigned short unit) {
    return unit == 0x000A || unit == 0x000D || unit == 0x2028 || unit == 0x2029;
}

/// ASCII only, whatever the flags.
inline bool isWordUnit(unsigned short unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') ||
           (unit >= '0' && unit <= '9') || unit == '_';
}

/// Kept: at the end both kinds of boundary are there
/// (held by MatchTest.FindsBothKindsOfBoundaryAtTheEnd).
inline bool isBoundary(const unsigned short* units, int length, int position, bool negated) {
    if (position >= length) return true;
    const bool isBehindWord = position > 0 && isWordUnit(units[position - 1]);
    return (isWordUnit(units[position]) != isBehindWord) != negated;
}

inline bool isLineStart(const unsigned short* units, int position, bool multiLine) {
    return position == 0 || (multiLine && isLineBreak(units[position - 1]));
}

inline bool isLineEnd(const unsigned short* units, int length, int position, bool multiLine) {
    return position >= length || (multiLine && isLineBreak(units[position]));
}

inline bool isSameUnit(unsigned short a, unsigned short b, bool ignoreCase) {
    return a == b || (ignoreCase && foldUpper(a) == foldUpper(b));
}

} // namespace KrCore
