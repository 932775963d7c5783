#include <krcore/text/UnicodeUtils.h>

#include <gtest/gtest.h>

#include <climits>

using namespace KrCore;

namespace {

/// Literal text as the library's units.
struct Units {
    unsigned short units[32] = {};

    explicit Units(const char16_t* text) {
        for (int i = 0; text[i] != 0; ++i)
            units[i] = text[i];
    }
    operator const unsigned short*() const { return units; }
};

int sign(int value) { return value < 0 ? -1 : value > 0; }

} // namespace

// U+0660 is a digit, but none of 0 to 9; U+24B6 has a partner without being a letter and U+00AA is
// the other way round; U+0237 came after Unicode 4.0.
TEST(UnicodeUtils, ClassifiesUnits) {
    enum { None = 0, WS = 1, Cf = 2, Start = 4, Char = 8, Pd = 16, Alpha = 32, Alnum = 64 };
    const struct {
        const char16_t* units;
        int answers;
    } rows[] = {
        {u"\b!\u07B2\u0237\u2016\u2028\u2029\u4DB6\xD800\xF8FF\uFFFF", None},
        {u"\t\n\v\f\r \u00A0\u1680\u2000\u3000", WS},
        {u"\u200B", WS | Cf},
        {u"\u00AD\u200C\u200D\uFEFF", Cf},
        {u"$_\u00AA\u0221\u3400\u4E00\u9FA5\uA48C\uD7A3", Start | Char},
        {u"\u0300\u0660\u203F", Char},
        {u"059", Char | Alnum},
        {u"Aq\u2160", Start | Char | Alpha | Alnum},
        {u"\u24B6", Alpha | Alnum},
        {u"-\u058A\u1806\u2010\u2011\u2012\u2013\u2014\u2015\u301C\u3030\uFE31\uFE32\uFE58\uFE63",
         Pd},
        {u"\u30A0\uFF0D", Pd},
    };
    for (const auto& row : rows) {
        for (const char16_t* next = row.units; *next != 0; ++next) {
            const unsigned short unit = *next;
            const int answers =
                (UnicodeUtils::isWS(unit) ? WS : 0) | (UnicodeUtils::isCf(unit) ? Cf : 0) |
                (UnicodeUtils::isSymbolStart(unit) ? Start : 0) |
                (UnicodeUtils::isSymbolChar(unit) ? Char : 0) |
                (UnicodeUtils::isPd(unit) ? Pd : 0) | (UnicodeUtils::iswalpha(unit) ? Alpha : 0) |
                (UnicodeUtils::iswalnum(unit) ? Alnum : 0);
            EXPECT_EQ(answers, row.answers) << std::hex << unit;
        }
    }
}

// The partner of U+10A0 came after Unicode 4.0.
TEST(UnicodeUtils, MapsCase) {
    const struct {
        const char16_t *units, *lower, *upper;
    } rows[] = {
        {u"AZaz@", u"azaz@", u"AZAZ@"},
        {u"\u00B5\u00DF\u00E9\u00F7\u00FF", u"\u00B5\u00DF\u00E9\u00F7\u00FF",
         u"\u039C\u00DF\u00C9\u00F7\u0178"},
        {u"\u0130\u0131\u0178\u017F\u0181\u0195", u"\u0069\u0131\u00FF\u017F\u0253\u0195",
         u"\u0130\u0049\u0178\u0053\u0181\u01F6"},
        {u"\u01C5\u0345\u0410\u0450\u0561", u"\u01C6\u0345\u0430\u0450\u0561",
         u"\u01C4\u0399\u0410\u0400\u0531"},
        {u"\u1F88\u2160\u212B\u24D0\uFF21", u"\u1F80\u2170\u00E5\u24D0\uFF41",
         u"\u1F88\u2160\u212B\u24B6\uFF21"},
        {u"\u10A0\u4E00\xD801\uFFFF", u"\u10A0\u4E00\xD801\uFFFF", u"\u10A0\u4E00\xD801\uFFFF"},
    };
    for (const auto& row : rows) {
        for (int i = 0; row.units[i] != 0; ++i) {
            const unsigned short unit = row.units[i];
            EXPECT_EQ(UnicodeUtils::towlower(unit), row.lower[i]) << std::hex << unit;
            EXPECT_EQ(UnicodeUtils::towupper(unit), row.upper[i]) << std::hex << unit;
        }
    }
}

TEST(UnicodeUtils, IrregularUnitsAreUpperAndLowerCase) {
    const struct {
        unsigned short unit;
        bool upper, lower;
    } rows[] = {{'A', true, false},   {'a', false, true},   {'1', false, false},
                {0x00B5, true, true}, {0x0130, true, true}, {0x4E00, false, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(UnicodeUtils::iswupper(row.unit), row.upper) << std::hex << row.unit;
        EXPECT_EQ(UnicodeUtils::iswlower(row.unit), row.lower) << std::hex << row.unit;
    }
}

TEST(UnicodeUtils, ReadsDecimalNumbers) {
    const struct {
        const char16_t* text;
        int value;
    } rows[] = {{u"  -42x", -42},
                {u"+", 0},
                {u"", 0},
                {u"+-1", 0},
                {u"\x3000\t+007.5", 7},
                {u"\x2028"
                 "1",
                 0},
                {u"2147483648", INT_MIN},
                {u"4294967297", 1},
                {u"-4294967298", -2}};
    for (const auto& row : rows)
        EXPECT_EQ(UnicodeUtils::watol(Units(row.text)), row.value);
    EXPECT_EQ(UnicodeUtils::watol(nullptr), 0);
}

// Without regard to case the unit U+00E9 is mapped, the byte 0xE9 is not.
TEST(UnicodeUtils, ComparesUnitsWithBytes) {
    const struct {
        const char16_t* text;
        const char* bytes;
        int exact, ignoringCase;
    } rows[] = {{u"abc", "abc", 0, 0},       {u"ABC", "abc", -32, 0}, {u"ab", "abc", -99, -67},
                {u"abc", "ab", 99, 67},      {u"", "", 0, 0},         {u"\xE9", "\xE9", 0, -32},
                {u"\xC9", "\xE9", -32, -32}, {u"\x131", "i", 200, 0}, {u"\x100", "\xFF", 1, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(UnicodeUtils::wcscmpmb(Units(row.text), row.bytes), row.exact);
        EXPECT_EQ(UnicodeUtils::wcsicmpmb(Units(row.text), row.bytes), row.ignoringCase);
    }
    EXPECT_EQ(UnicodeUtils::wcsncmpmb(Units(u"abX"), "abY", 2), 0);
    EXPECT_EQ(sign(UnicodeUtils::wcsncmpmb(Units(u"abX"), "abY", 3)), -1);
    EXPECT_EQ(UnicodeUtils::wcsnicmpmb(Units(u"ABx"), "abY", 2), 0);
    EXPECT_EQ(UnicodeUtils::wcsnicmpmb(Units(u"a"), "b", 0), 0);
    EXPECT_EQ(UnicodeUtils::wcscmpmb(nullptr, nullptr), 0);
    EXPECT_EQ(UnicodeUtils::wcscmpmb(Units(u"a"), nullptr), 97);
}
