#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

using namespace KrCore;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

enum : int { Whole = 0, BeforeBlank = 1, Prefix = 2 };

std::string narrow(const String& text) { return {text.begin(), text.end()}; }

void expectSame(double value, double expected) {
    if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(value)) << value;
    } else {
        EXPECT_EQ(value, expected);
        EXPECT_EQ(std::signbit(value), std::signbit(expected));
    }
}

struct ScanRow {
    const char* text;
    int flags;
    double value;
    const char* rest;
};

} // namespace

TEST(NumberScan, StopsWhereTheNumberEnds) {
    const ScanRow rows[] = {{"", Whole, 0, ""},
                            {" \t\n", Whole, 0, ""},
                            {"  12  ", BeforeBlank, 12, "  "},
                            {"  12  ", Whole, notANumber, "  "},
                            {"12 pt", BeforeBlank, 12, " pt"},
                            {"12pt", BeforeBlank, notANumber, "pt"},
                            {"12pt", Prefix, 12, "pt"},
                            {"12 pt", BeforeBlank | 0x300, 12, " pt"},
                            {"12 ", 0x100, notANumber, " "},
                            {"-", Prefix, notANumber, ""},
                            {"- 5", Prefix, notANumber, " 5"},
                            {"+-5", Prefix, notANumber, "-5"},
                            {" -.", Prefix, notANumber, "."},
                            {".e5", Prefix, notANumber, ".e5"},
                            {"abc", Prefix, notANumber, "abc"},
                            {".5", Whole, 0.5, ""},
                            {"-12.50", Whole, -12.5, ""},
                            {"-0.0", Whole, -0.0, ""},
                            {"..", Prefix, notANumber, ".."},
                            {"+1", Whole, 1, ""},
                            {"5.", Whole, 5, ""},
                            {"1.5.5", Prefix, 1.5, ".5"},
                            {"1e", Prefix, 1, "e"},
                            {"1e+", Prefix, 1, "e+"},
                            {"2E-3x", Prefix, 0.002, "x"},
                            {"-Infinity", Whole, -infinity, ""},
                            {"Infinity!", Whole, notANumber, "!"},
                            {"Infinit", Prefix, notANumber, "Infinit"},
                            {"NaN 5", BeforeBlank, notANumber, " 5"},
                            {" -0x10", Whole, -16, ""},
                            {"0XfFg", Prefix, 255, "g"},
                            {"0x", Prefix, notANumber, "0x"},
                            {"-0", Whole, -0.0, ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << '"' << row.text << "\" with flags " << row.flags);
        String rest("untouched");
        expectSame(Variant::scanDouble(row.text, row.flags, &rest), row.value);
        EXPECT_EQ(narrow(rest), row.rest);
    }
    String text("7 dwarfs");
    EXPECT_EQ(Variant::scanDouble(text, Prefix, &text), 7);
    EXPECT_EQ(narrow(text), " dwarfs") << "the rest may replace the text itself";
    EXPECT_EQ(Variant::scanDouble(String(u"\u2003\u00A05"), Whole), 5);
    EXPECT_TRUE(std::isnan(Variant::scanDouble(String(u" \0 5", 4), Prefix)));
}

TEST(NumberScan, ScalesByOnePowerOfTen) {
    const struct {
        const char* text;
        double value;
    } rows[] = {{"0.1", 0.1},
                {"0.00000000000000000000000012", 1.2e-25},
                {"1.1e60", 1.1000000000000002e+60},
                {"3e100", 3.0000000000000002e+100},
                {"1e-250", 9.999999999999999e-251},
                {"5e-324", 0},
                {"1e-320", 0},
                {"1e999", infinity},
                {"1e99999999999", infinity},
                {"-1e-99999999999", -0.0},
                {"0e999", 0},
                {"000000000000000000000001", 1},
                {"1234567890123456784", 1234567890123456780.0},
                {"1234567890123456785", 1234567890123456790.0},
                {"1234567890123456789012", 1.234567890123456789e21},
                {"0.12345678901234567891234", 0.123456789012345679}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        expectSame(Variant::scanDouble(row.text, Whole), row.value);
    }
}

TEST(NumberScan, KeepsItsCorrections) {
    const struct {
        const char* text;
        double value;
    } rows[] = {{"1.7976931348623158e308", 1.7976931348623157e308},
                {"17976931348623158e-292", 1.7976931348623157e308},
                {"123456789012345678.12", 1.2345678901234568e+17},
                {"123456789012345671.12", 1.2345678901234568e+17},
                {"123456789012345678.1234", 1.2345678901234566e+17},
                {"123456789012345671.123", 1.2345678901234567e+17}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        expectSame(Variant::scanDouble(row.text, Whole), row.value);
    }
}

TEST(NumberScan, ReadsWholeNumbersInAnyRadix) {
    const struct {
        const char* text;
        int radix;
        int flags;
        double value;
        const char* rest;
    } rows[] = {{"101", 2, Whole, 5, ""},
                {"-zZ", 36, Whole, -1295, ""},
                {"0x1F", 16, Whole, 31, ""},
                {"1F", 16, Whole, 31, ""},
                {"0x1F", 0, Whole, 31, ""},
                {"010", 0, Whole, 10, ""},
                {"129", 8, Prefix, 10, "9"},
                {"9", 8, Prefix, notANumber, "9"},
                {"5", 37, Prefix, notANumber, "5"},
                {"5", 1, Prefix, notANumber, "5"},
                {"", 10, Whole, 0, ""},
                {" 42 ", 10, BeforeBlank, 42, " "},
                {"18446744073709551616", 10, Whole, 18446744073709551616.0, ""},
                {"-9007199254740993", 10, Whole, -9007199254740992.0, ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << '"' << row.text << "\" in base " << row.radix);
        String rest;
        expectSame(Variant::scanInteger(row.text, row.radix, row.flags, &rest), row.value);
        EXPECT_EQ(narrow(rest), row.rest);
    }
}

TEST(NumberScan, TakesTextsOfAnyLength) {
    String digits;
    digits.setup('9', 3000000);
    EXPECT_EQ(Variant::scanDouble(digits, Whole), infinity);
    EXPECT_EQ(Variant::scanInteger(digits, 10, Whole), infinity);
    EXPECT_EQ(Variant::scanDouble(String("0.") + digits, Whole), 1);
    String zeros;
    zeros.setup('0', 3000000);
    EXPECT_EQ(Variant::scanDouble(String("0.") + zeros + "1", Whole), 0);
    EXPECT_EQ(Variant::scanDouble(zeros + "5e3", Whole), 5000);
    String blanks;
    blanks.setup(' ', 3000000);
    EXPECT_EQ(Variant::scanDouble(blanks, Whole), 0);
}

TEST(NumberScan, ReadsBackWhatNumbersPrint) {
    std::mt19937_64 random(4711);
    for (int round = 0; round < 20000; ++round) {
        const double whole = static_cast<double>(static_cast<std::int64_t>(random()) >> 11);
        EXPECT_EQ(Variant::scanDouble(Variant(whole).getString(), Whole), whole);
        // Fifteen digits come back as they went.
        const double fraction = std::ldexp(static_cast<double>(random() >> 11), -53) * 1000;
        const Variant first(fraction);
        const Variant second(Variant::scanDouble(first.getString(), Whole));
        EXPECT_TRUE(first.getString() == second.getString()) << fraction;
        EXPECT_NEAR(second.getDouble(), fraction, 1e-11);
    }
}
