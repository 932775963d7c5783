#include "values/NumberText.h"

#include <krcore/text/String.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace KrCore;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr auto shortest = NumberNotation::Shortest;
constexpr auto fixed = NumberNotation::Fixed;
constexpr auto exponential = NumberNotation::Exponential;

std::string textOf(double value, int radix = 10, int precision = 15,
                   NumberNotation notation = shortest) {
    const NumberText text(value, radix, precision, notation);
    return {text.units(), text.units() + text.length()};
}

} // namespace

TEST(NumberText, WritesTheFormThatScriptsSee) {
    const struct {
        double value;
        const char* text;
    } rows[] = {{0, "0"},
                {-0.0, "0"},
                {1234567890, "1234567890"},
                {5e9, "5000000000"},
                {-2147483649.0, "-2147483649"},
                {9007199254740993.0, "9007199254740992"},
                {123456789012345680000.0, "123456789012345683968"},
                {999999999999999868928.0, "999999999999999868928"},
                {1e21, "1e+21"},
                {-1.5e300, "-1.5e+300"},
                {0.1, "0.1"},
                {0.1 + 0.2, "0.3"},
                {1.0 / 3, "0.333333333333333"},
                {200.0 / 3, "66.6666666666667"},
                {1e-6, "0.000001"},
                {1.23456789e-6, "0.00000123456789"},
                {0.99999999999999989, "1"},
                {1e-7, "1e-7"},
                {1e-20, "9.999999999999999e-21"},
                {5e-324, "4.940656458412465e-324"},
                {999.99999999999989, "1000"},
                {123456789012340.5, "123456789012340"},
                {123456789012341.5, "123456789012342"},
                {1000000000000000.5, "1000000000000000.5"},
                {infinity, "Infinity"},
                {-infinity, "-Infinity"},
                {-std::nan(""), "NaN"},
                {largest, "1.7976931348623157e+308"},
                {-largest, "-1.7976931348623157e+308"}};
    for (const auto& row : rows)
        EXPECT_EQ(textOf(row.value), row.text);
    EXPECT_EQ(textOf(1e-6), textOf(1e-6, 0)) << "radix 0 is decimal";
}

TEST(NumberText, RoundsTheExactValueWithTiesToEven) {
    const struct {
        double value;
        int precision;
        const char* text;
    } rows[] = {{0.5, 0, "0"},      {1.5, 0, "2"},      {2.5, 0, "2"},
                {0.125, 2, "0.12"}, {0.375, 2, "0.38"}, {-0.125, 2, "-0.12"},
                {2.675, 2, "2.67"}, {1.005, 2, "1.00"}, {0.999999, 3, "1.000"},
                {9.5, 0, "10"},     {1e-30, 3, "0.000"}};
    for (const auto& row : rows)
        EXPECT_EQ(textOf(row.value, 10, row.precision, fixed), row.text);
}

TEST(NumberText, CutsFixedNotationAtFifteenDigits) {
    const struct {
        double value;
        int precision;
        const char* text;
    } rows[] = {{0, 2, "0.00"},
                {5, 2, "5.00"},
                {1.0 / 3, 20, "0.33333333333333300000"},
                {1234.5678, 14, "1234.56780000000000"},
                {123456789012345.25, 3, "123456789012345.000"},
                {1234567890123456.25, 3, "1234567890123456.250"},
                {1234567890123456.25, 0, "1234567890123456.250000"},
                {1e22, 1, "10000000000000000000000.0"},
                {12.5, -1, "12.500000"},
                {largest, 2, "1.7976931348623157e+308"}};
    for (const auto& row : rows)
        EXPECT_EQ(textOf(row.value, 10, row.precision, fixed), row.text);
    EXPECT_EQ(textOf(2, 10, 1000000, fixed).size(), 102u);
}

TEST(NumberText, WritesExponentsWithoutLeadingZeros) {
    const struct {
        double value;
        int precision;
        NumberNotation notation;
        const char* text;
    } rows[] = {{12345, 2, exponential, "1.23e+4"},
                {1, 3, exponential, "1.000e+0"},
                {1e-5, 0, exponential, "1e-5"},
                {-0.0, 1, exponential, "-0.0e+0"},
                {1e-7, 3, shortest, "1e-7"},
                {3.14159, 3, shortest, "3.142"},
                {1e100, 20, exponential, "1.00000000000000001590e+100"},
                {1e100, -5, exponential, "1.000000e+100"}};
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(row.value, 10, row.precision, row.notation), row.text);
    }
}

TEST(NumberText, WritesTheWholePartInAnyRadix) {
    const struct {
        double value;
        int radix;
        const char* text;
    } rows[] = {{255, 16, "ff"},
                {-255.9, 16, "-ff"},
                {35, 36, "z"},
                {0, 2, "0"},
                {-0.5, 2, "0"},
                {18446744073709551616.0, 16, "10000000000000000"},
                {1e30, 36, "2oy99wnkl1ce84e0krgg"},
                {5, 37, "NaN"},
                {5, 1, "NaN"},
                {5, -2147483647, "NaN"},
                {infinity, 99, "Infinity"}};
    for (const auto& row : rows)
        EXPECT_EQ(textOf(row.value, row.radix), row.text);
    EXPECT_EQ(textOf(-0x1p1023, 2), "-1" + std::string(1023, '0'));
}
