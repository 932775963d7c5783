#include "support/TextSupport.h"

#include <climits>
#include <cmath>
#include <limits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

template <class... Args>
String formatted(const char* format, Args... args) {
    String narrow, wide;
    narrow.print(format, args...);
    wide.print(String(format).wstr(), args...);
    EXPECT_EQ(narrow, wide) << "both forms of format are read alike";
    return narrow;
}

TEST(StringFormat, PrintsIntegers) {
    const struct {
        const char* format;
        int value;
        const char* result;
    } rows[] = {{"%d", -42, "-42"},
                {"%D", INT_MIN, "-2147483648"},
                {"%hd", 70000, "70000"},
                {"%ld", INT_MAX, "2147483647"},
                {"%+d", 0, "+0"},
                {"%+d", -1, "-1"},
                {"%x", 74565, "2345"},
                {"%lx", 74565, "12345"},
                {"%X", 0xABCD, "ABCD"},
                {"%lX", -1, "FFFFFFFF"},
                {"%u", -1, "65535"},
                {"%lu", -1, "4294967295"},
                {"%o", 8, "10"},
                {"%lb", 5, "101"},
                {"%B", 0x1FFFF, "1111111111111111"},
                {"%5d", -42, "  -42"},
                {"%05d", -42, "-0042"},
                {"%+06d", 42, "+00042"},
                {"%-5d|", -42, "-42  |"},
                {"%-05d|", 42, "42   |"},
                {"%0-5d|", 42, "42   |"},
                {"%2d", 12345, "12345"},
                {"%lld", 7, "7"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(formatted(row.format, row.value), row.result);
    }
}

TEST(StringFormat, KeepsWhatIsNoConversion) {
    EXPECT_EQ(formatted("100%%"), "100%");
    EXPECT_EQ(formatted("%i%q %5%"), "iq %");
    EXPECT_EQ(formatted("50%"), "50%");
    EXPECT_EQ(formatted("a%-5.2l"), "a%-5.2l");
    EXPECT_EQ(formatted(""), "");
    String s("old");
    s.print(static_cast<const char*>(nullptr));
    EXPECT_EQ(s, "");
}

TEST(StringFormat, TakesWidthAndPrecisionFromArguments) {
    EXPECT_EQ(formatted("%*d|%*d|", 4, 1, -4, 2), "   1|2   |");
    EXPECT_EQ(formatted("%.*s", 2, "abcdef"), "ab");
    EXPECT_EQ(formatted("%.*s", -2, "abcdef"), "abcdef");
    EXPECT_EQ(formatted("%.*f", 1, 2.25), "2.2");
}

TEST(StringFormat, PrintsCharactersAndTexts) {
    const unsigned short wide[] = {'w', 0x20AC, 0};
    const char unterminated[] = {'a', 'b', 'c'};
    EXPECT_EQ(formatted("%s|%5s|%-5s|%05s", "ab", "cd", "ef", "gh"), "ab|   cd|ef   |000gh");
    EXPECT_EQ(formatted("%ls|%4ls|%.1ls", wide, wide, wide), u"w\u20AC|  w\u20AC|w");
    EXPECT_EQ(formatted("%.3s", unterminated), "abc");
    EXPECT_EQ(formatted("%s%8ls%.2s", nullptr, nullptr, nullptr), "(null)  (null)(n");
    EXPECT_EQ(formatted("%c%C%3c%-3c|", 'a', 'b', 'c', 'd'), "ab  cd  |");
    EXPECT_EQ(formatted("%lc%lc%lc", 0x20AC, 0, 'x'), u"\u20ACx");
}

TEST(StringFormat, TakesTheArgumentOfUpperCaseS) {
    EXPECT_EQ(formatted("<%S%9S>%d", "no", "no", 5), "<>5");
}

TEST(StringFormat, PrintsPointersSixteenWide) {
    auto* pointer = reinterpret_cast<void*>(std::uintptr_t(0x123456789ABCDEF0));
    EXPECT_EQ(formatted("%p", pointer), "        9abcdef0");
    EXPECT_EQ(formatted("%03P", pointer), "000000009ABCDEF0");
}

TEST(StringFormat, PrintsDoubles) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* format;
        double value;
        const char* result;
    } rows[] = {{"%.2f", 3.14159, "3.14"},
                {"%f", 1.5, "1.500000"},
                {"%.0f", 2.5, "2"},
                {"%.99f", 0.1, "0.10000000000000"},
                {"%n", -1.5, "-1.500000"},
                {"%.1N", 0.25, "0.2"},
                {"%+.1f", 1.0, "+1.0"},
                {"%+f", -0.0, "-0.000000"},
                {"%e", 12345.678, "1.234568e+04"},
                {"%.3E", 1e-300, "1.000E-300"},
                {"%.14e", 1.0 / 3, "3.33333333333333e-01"},
                {"%g", 1e6, "1e+06"},
                {"%.15g", 0.1234567, "0.123457"},
                {"%G", 1e-10, "1E-10"},
                {"%Lf", 0.5, "0.500000"},
                {"%.4f", 12345678901234.56789, "12345678901234.5600"},
                {"%.0f", 1e20, "100000000000000000000"},
                {"%.0f", -123456789012345678901.0, "-123456789012345680000"},
                {"%.3f", 123456789012345680000.0, "123456789012345680000.000"},
                {"%8.2f", -1.5, "   -1.50"},
                {"%08.2f", -1.5, "-0001.50"},
                {"%-8.2f|", 1.5, "1.50    |"},
                {"%f", infinity, "inf"},
                {"%06F", -infinity, "  -INF"},
                {"%g", std::nan(""), "nan"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(formatted(row.format, row.value), row.result);
    }
    EXPECT_EQ(formatted("%f", std::numeric_limits<double>::max()).length(), 309 + 7);
}

TEST(StringFormat, ReadsFormatAndArgumentsFromTheStringItself) {
    String s("<%ls>");
    s.print(s.wstr(), s.wstr());
    EXPECT_EQ(s, "<<%ls>>");
}

TEST(StringFormat, RefusesWidthsThatNoStringCanHold) {
    String s("kept");
    EXPECT_THROW(s.print("%2147483647d", 1), OutOfMemory);
    EXPECT_THROW(s.print("%99999999999999999999s", "x"), OutOfMemory);
    EXPECT_THROW(s.print("%*d", INT_MIN, 1), OutOfMemory);
    EXPECT_EQ(s, "kept");
    EXPECT_EQ(formatted("%.99999999999999999999s", "x"), "x");
}

} // namespace
