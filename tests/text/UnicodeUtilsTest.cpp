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

TEST(UnicodeUtils, ClassifiesUnits) {
    enum { None = 0, WS = 1, Cf = 2, Start = 4, Char = 8, Pd = 16, Alpha = 32, Alnum = 64 };
    const struct {
        unsigned short unit;
        int answers;
    } rows[] = {{0x0008, None},
                {0x0009, WS},
                {0x000D, WS},
                {0x0020, WS},
                {0x00A0, WS},
                {0x1680, WS},
                {0x2000, WS},
                {0x3000, WS},
                {0x200B, WS | Cf},
                {0x2028, None},
                {0x2029, None},
                {0x00AD, Cf},
                {0x200C, Cf},
                {0xFEFF, Cf},
                {'$', Start | Char},
                {'_', Start | Char},
                {'7', Char | Alnum},
                {'q', Start | Char | Alpha | Alnum},
                {0x203F, Char},
                {0x0300, Char},
                {0x0660, Char}, // A digit, but none of 0 to 9.
                {0x2160, Start | Char | Alpha | Alnum},
                {0x24B6, Alpha | Alnum}, // Has a partner without being a letter.
                {0x00AA, Start | Char},  // A letter without a partner.
                {0x4E00, Start | Char},
                {0xAC00, Start | Char},
                {0x4DB6, None},
                {0x07B2, None},
                {0xD800, None},
                {0xF8FF, None},
                {0xFFFF, None},
                {0x0221, Start | Char}, // The last letter of its row that Unicode 4.0 knew ...
                {0x0237, None},         // ... and one that came later.
                {0x002D, Pd},
                {0x2015, Pd},
                {0x2016, None},
                {0xFF0D, Pd}};
    for (const auto& row : rows) {
        const unsigned short unit = row.unit;
        const int answers =
            (UnicodeUtils::isWS(unit) ? WS : 0) | (UnicodeUtils::isCf(unit) ? Cf : 0) |
            (UnicodeUtils::isSymbolStart(unit) ? Start : 0) |
            (UnicodeUtils::isSymbolChar(unit) ? Char : 0) | (UnicodeUtils::isPd(unit) ? Pd : 0) |
            (UnicodeUtils::iswalpha(unit) ? Alpha : 0) | (UnicodeUtils::iswalnum(unit) ? Alnum : 0);
        EXPECT_EQ(answers, row.answers) << std::hex << unit;
    }
}

TEST(UnicodeUtils, KnowsSeventeenDashes) {
    int count = 0;
    int sum = 0;
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        if (!UnicodeUtils::isPd(static_cast<unsigned short>(unit))) continue;
        ++count;
        sum += unit;
    }
    EXPECT_EQ(count, 17);
    EXPECT_EQ(sum, 0x66743);
}

TEST(UnicodeUtils, MapsCase) {
    const struct {
        unsigned short unit, lower, upper;
    } rows[] = {{'A', 'a', 'A'},          {'z', 'z', 'Z'},          {'@', '@', '@'},
                {0x00B5, 0x00B5, 0x039C}, {0x00DF, 0x00DF, 0x00DF}, {0x00E9, 0x00E9, 0x00C9},
                {0x00F7, 0x00F7, 0x00F7}, {0x00FF, 0x00FF, 0x0178}, {0x0130, 0x0069, 0x0130},
                {0x0131, 0x0131, 0x0049}, {0x0178, 0x00FF, 0x0178}, {0x017F, 0x017F, 0x0053},
                {0x0181, 0x0253, 0x0181}, {0x0195, 0x0195, 0x01F6}, {0x01C5, 0x01C6, 0x01C4},
                {0x0345, 0x0345, 0x0399}, {0x0410, 0x0430, 0x0410}, {0x0450, 0x0450, 0x0400},
                {0x0561, 0x0561, 0x0531}, {0x1F88, 0x1F80, 0x1F88}, {0x2160, 0x2170, 0x2160},
                {0x212B, 0x00E5, 0x212B}, {0x24D0, 0x24D0, 0x24B6}, {0xFF21, 0xFF41, 0xFF21},
                {0x10A0, 0x10A0, 0x10A0}, // Its partner is younger than Unicode 4.0.
                {0x4E00, 0x4E00, 0x4E00}, {0xD801, 0xD801, 0xD801}, {0xFFFF, 0xFFFF, 0xFFFF}};
    for (const auto& row : rows) {
        EXPECT_EQ(UnicodeUtils::towlower(row.unit), row.lower) << std::hex << row.unit;
        EXPECT_EQ(UnicodeUtils::towupper(row.unit), row.upper) << std::hex << row.unit;
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

TEST(UnicodeUtils, ComparesUnitsWithBytes) {
    const struct {
        const char16_t* text;
        const char* bytes;
        int exact, ignoringCase;
    } rows[] = {{u"abc", "abc", 0, 0},
                {u"ABC", "abc", -32, 0},
                {u"ab", "abc", -99, -67},
                {u"abc", "ab", 99, 67},
                {u"", "", 0, 0},
                {u"\xE9", "\xE9", 0, -32}, // The unit is mapped to U+00C9, the byte is not.
                {u"\xC9", "\xE9", -32, -32},
                {u"\x131", "i", 200, 0},
                {u"\x100", "\xFF", 1, 1}};
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
