#include "text/encoders/CodePageTable.h"

#include <krcore/text/String.h>

#include <cstddef>
#include <cstring>

namespace KrCore {

namespace {

// Kept: "ISO-8859-3" is page 28591, page 28606 has cut-off aliases, page 437 is "IBM850", and the
// KOI8-U page has a number that no system knows. Hosts have stored the names that this table gives.
// Held by EncoderRegistry.KeepsTheOddRowsOfTheCodePageTable.
constexpr CodePageEntry codePages[] = {
    {10000, 1, "MACINTOSH,MAC-ROMAN"},
    {65000, 0, "UTF-7,UTF7,UNICODE-1-1-UTF-7,UNICODE-2-0-UTF-7"},
    {28592, 0, "ISO-8859-2,ISO-8859-2,ISO-8859-2:1987,ISO-IR-101,LATIN2"},
    {28591, 0, "ISO-8859-3,ISO-8859-3,ISO-8859-3:1988,ISO-IR-109,LATIN3"},
    {28594, 0, "ISO-8859-4,ISO-8859-4,ISO-8859-4:1988,ISO-IR-110,LATIN4,BALTIC"},
    {28595, 0, "ISO-8859-5,ISO-8859-5,ISO-8859-5:1988,ISO-IR-144,CYRILLIC"},
    {28596, 0, "ISO-8859-6,ISO-8859-6,ISO-8859-6:1987,ISO-IR-127,ECMA-114,ASMO-708,ARABIC"},
    {28597, 0, "ISO-8859-7,ISO-8859-7,ISO-8859-7:1987,ISO-IR-126,ECMA-118,ELOT-928,GREEK8,GREEK"},
    {28598, 0, "ISO-8859-8,ISO-8859-8,ISO-8859-8:1988,ISO-IR-138,HEBREW"},
    {28599, 0, "ISO-8859-9,ISO-8859-9,ISO-8859-9:1989,ISO-IR-148,LATIN5,TURKISH"},
    {28600, 0, "ISO-8859-10,ISO-8859-10,ISO-8859-10:1992,ISO-IR-157,LATIN6"},
    {28603, 0, "ISO-8859-13,ISO-8859-13,ISO-IR-179,LATIN7"},
    {28604, 0, "ISO-8859-14,ISO-8859-14,ISO-8859-14,ISO-8859-14:1998,ISO-IR-199,LATIN8"},
    {28605, 0, "ISO-8859-15,ISO-8859-15,ISO-8859-15:1998,ISO-IR-203"},
    {28606, 0, "ISO-8859-16,ISO-885,ISO-885,MS-EE"},
    {850, 1, "IBM850"},
    {866, 0, "IBM866"},
    {932, 0, "SJIS,SHIFT-JIS,MS-SJIS,MS-KANJI"},
    {936, 0, "GBK,WINDOWS-936,GB2312,GB-2312-80,ISO-IR-58,CHINESE"},
    {949, 0, "UHC,KSC-5601,KS-C-5601-1987,KS-C-5601-1989,ISO-IR-149,KOREAN"},
    {950, 0, "BIG5,BIG-5,BIG-FIVE,BIGFIVE,CN-BIG5"},
    {1251, 0, "MS-CYRL"},
    {1252, 1, "MS-ANSI"},
    {1253, 0, "MS-GREEK"},
    {1254, 0, "MS-TURK"},
    {1255, 0, "MS-HEBR"},
    {1256, 0, "MS-ARAB"},
    {1257, 0, "WINBALTRIM"},
    {1361, 0, "JOHAB"},
    {51932, 0, "EUC-JP,EUCJP"},
    {51949, 0, "EUC-KR,EUCKR"},
    {52936, 0, "HZ,HZ-GB-2312"},
    {10001, 0, "MAC-JAPANESE"},
    {10006, 0, "MAC-GREEK"},
    {10007, 0, "MAC-CYRILLIC"},
    {10029, 0, "MAC-LATIN"},
    {10079, 0, "MAC-ICELANDIC"},
    {10081, 0, "MAC-TURKISH"},
    {437, 1, "IBM850"},
    {709, 0, "CP709,WINDOWS-709,ASMO-449,BCONV4"},
    {1026, 0, "EBCDIC"},
    {20866, 0, "KOI-8R"},
    {21886, 0, "KOI-8U"},
    {50220, 0, "ISO-2022-JP"},
    {50225, 0, "ISO-2022-KR"},
};

bool equals(const unsigned short* units, const char* text, int length) {
    for (int i = 0; i < length; ++i) {
        if (units[i] != static_cast<unsigned char>(text[i])) return false;
    }
    return true;
}

bool hasAlias(const char* aliases, const String& name) {
    for (const char* alias = aliases;;) {
        const char* end = std::strchr(alias, ',');
        const auto length =
            static_cast<int>(end ? end - alias : std::ptrdiff_t(std::strlen(alias)));
        if (length == name.length() && equals(name.wstr(), alias, length)) return true;
        if (!end) return false;
        alias = end + 1;
    }
}

} // namespace

const CodePageEntry* findCodePage(int page) {
    for (const CodePageEntry& entry : codePages) {
        if (entry.page == page) return &entry;
    }
    return nullptr;
}

const CodePageEntry* findCodePage(const String& name) {
    for (const CodePageEntry& entry : codePages) {
        if (hasAlias(entry.aliases, name)) return &entry;
    }
    return nullptr;
}

} // namespace KrCore
