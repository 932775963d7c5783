#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

/// Classes and simple case mappings of UTF-16 code units, for the characters that Unicode 4.0
/// knows: one unit maps to one unit, and no language has a say. Surrogates and all units the tables
/// leave out have no class and map to themselves. All functions are pure: any thread, before
/// start-up too.
class KR_API UnicodeUtils {
public:
    UnicodeUtils() = delete;

    /// TAB to CR, the space separators and U+200B, but neither U+2028 nor U+2029.
    static bool isWS(unsigned short unit);
    /// Format characters (general category Cf), U+00AD and U+FEFF among them.
    static bool isCf(unsigned short unit);
    /// Dash punctuation.
    static bool isPd(unsigned short unit);
    /// May begin an identifier: letters, letter numbers, "$" and "_". True for every unit of the
    /// ideograph, Yi and Hangul blocks U+3400 to U+4DB5, U+4E00 to U+9FA5, U+A000 to U+A48C and
    /// U+AC00 to U+D7A3.
    static bool isSymbolStart(unsigned short unit);
    /// May stand in an identifier: whatever may begin one, digits, combining marks, connector
    /// punctuation.
    static bool isSymbolChar(unsigned short unit);

    /// Has an upper-case or lower-case partner. Not "is a letter": ideographs and U+00AA answer
    /// false, the circled letter U+24B6 answers true.
    static bool iswalpha(unsigned short unit);
    /// 0 to 9, or `iswalpha`.
    static bool iswalnum(unsigned short unit);
    /// Units whose mapping is irregular (U+00B5, U+00FF and some hundred more) answer true to both
    /// questions.
    static bool iswupper(unsigned short unit);
    static bool iswlower(unsigned short unit);
    static unsigned short towlower(unsigned short unit);
    static unsigned short towupper(unsigned short unit);

    /// The decimal number at the start of 0-terminated `text`, after white space and one sign; 0
    /// without a digit. Text behind the digits is ignored; a number too large wraps around at 2^32.
    static int watol(const unsigned short* text);

    /// Compare 0-terminated 16-bit with 0-terminated 8-bit text, a byte standing for the unit of
    /// its value 0 to 255. The result is the difference at the first mismatch, 0 for equal texts;
    /// `count` limits the positions looked at, and a count below 1 gives 0. A null pointer is the
    /// empty text.
    static int wcscmpmb(const unsigned short* text, const char* bytes);
    static int wcsncmpmb(const unsigned short* text, const char* bytes, int count);
    /// The same without regard to case: the unit is mapped with `towupper`, of the bytes only a to
    /// z. So U+00E9 does not match the byte 0xE9.
    static int wcsicmpmb(const unsigned short* text, const char* bytes);
    static int wcsnicmpmb(const unsigned short* text, const char* bytes, int count);
};

} // namespace KrCore
