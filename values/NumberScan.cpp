#include "values/NumberScan.h"

#include <krcore/text/String.h>
#include <krcore/text/UnicodeUtils.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace KrCore {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

constexpr int significantDigits = 18;
constexpr std::uint64_t smallestCorrected = 17976931348623158u;
constexpr int largestWrittenExponent = 511;
constexpr int largestFinitePower = 308;

/// 10^n as the product of the powers with one bit of n each, in ascending order. Kept: the rounding
/// of these products shows in the last digit of scanned numbers (held by
/// NumberScan.ScalesByOnePowerOfTen).
constexpr std::array<double, largestFinitePower + 1> powersOfTen = [] {
    constexpr double binaryPowers[] = {10, 100, 1e4, 1e8, 1e16, 1e32, 1e64, 1e128, 1e256};
    std::array<double, largestFinitePower + 1> powers{};
    for (std::size_t exponent = 0; exponent < powers.size(); ++exponent) {
        double power = 1;
        for (std::size_t bit = 0; bit < std::size(binaryPowers); ++bit) {
            if (exponent >> bit & 1) power *= binaryPowers[bit];
        }
        powers[exponent] = power;
    }
    return powers;
}();

bool isDigit(unsigned short unit) { return unit >= '0' && unit <= '9'; }

/// Reads four digits at once. Four units lie in one word, the first in its lowest 16 bits; the
/// digits are joined to two pairs and the pairs to one number.
bool readFourDigits(const unsigned short* units, std::uint64_t& value) {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t highBits = 0xFFF0FFF0FFF0FFF0u;
    constexpr std::uint64_t zeros = 0x0030003000300030u;
    std::uint64_t word;
    std::memcpy(&word, units, sizeof word);
    if ((word & highBits) != zeros) return false;
    word -= zeros;
    if (((word + 0x0006000600060006u) & highBits) != 0) return false;
    const std::uint64_t pairs = (word * 10 + (word >> 16)) & 0x0000FFFF0000FFFFu;
    value = (pairs & 0xFFFF) * 100 + (pairs >> 32);
    return true;
}

/// The short way for most texts: nothing but up to 16 digits, perhaps with a point among them.
/// False for all others, which are read with care.
bool scanPlain(const unsigned short* unit, const unsigned short* end, double& value) {
    constexpr std::ptrdiff_t maximalDigits = 16;
    const bool isNegative = unit != end && *unit == '-';
    if (isNegative) ++unit;
    std::ptrdiff_t digitCount = end - unit;
    if (digitCount > maximalDigits + 1) return false;
    const unsigned short* fraction = end;
    std::uint64_t mantissa = 0;
    while (unit != end) {
        if (std::uint64_t four; end - unit >= 4 && readFourDigits(unit, four)) {
            mantissa = mantissa * 10000 + four;
            unit += 4;
        } else if (isDigit(*unit)) {
            mantissa = mantissa * 10 + static_cast<unsigned int>(*unit++ - '0');
        } else if (*unit == '.' && fraction == end) {
            fraction = ++unit;
            --digitCount;
        } else {
            return false;
        }
    }
    if (digitCount == 0 || digitCount > maximalDigits) return false;
    value = static_cast<double>(mantissa);
    if (fraction != end) value /= powersOfTen[static_cast<std::size_t>(end - fraction)];
    if (isNegative) value = -value;
    return true;
}

/// 99 for what is no digit in any base.
int digitValue(unsigned short unit) {
    if (isDigit(unit)) return unit - '0';
    const int letter = (unit | 0x20) - 'a';
    return unit < 128 && letter >= 0 && letter < 26 ? letter + 10 : 99;
}

} // namespace

TrailingText trailingTextOf(int flags) {
    switch (flags & ~0x300) {
    case 0:
        return TrailingText::Refused;
    case 1:
        return TrailingText::AfterBlank;
    default:
        return TrailingText::Allowed;
    }
}

/// The digits of a decimal number. A text has fewer than 2^30 units, so nothing here overflows.
struct NumberScan::Decimal {
    std::uint64_t mantissa = 0; ///< The first 18 significant digits, rounded by the 19th.
    int digitCount = 0;         ///< Significant digits read.
    int exponent = 0;
    bool hasDigits = false;

    /// Kept: two groups of texts come out as the scripts that wrote them expect (held by
    /// NumberScan.KeepsItsCorrections).
    bool isCorrected(double& value) const {
        if (mantissa == smallestCorrected && (exponent == 292 || exponent == -292)) {
            value = std::numeric_limits<double>::max();
            return true;
        }
        const bool isCounting = mantissa >= 123456789012345670u && mantissa <= 123456789012345679u;
        if (!isCounting || exponent != 0 || (digitCount != 20 && digitCount != 22)) return false;
        value = digitCount == 20 ? 1.2345678901234568e+17 : 1.2345678901234566e+17;
        return true;
    }

    double value() const {
        double result;
        if (mantissa == 0) return 0;
        if (mantissa >= smallestCorrected && isCorrected(result)) return result;
        const int size = exponent < 0 ? -exponent : exponent;
        const double power =
            size <= largestFinitePower ? powersOfTen[static_cast<std::size_t>(size)] : infinity;
        result = static_cast<double>(mantissa);
        return exponent < 0 ? result / power : result * power;
    }
};

NumberScan::NumberScan(const String& text)
    : start_(text.begin()), current_(text.begin()), end_(text.end()) {}

int NumberScan::position() const { return static_cast<int>(current_ - start_); }

double NumberScan::scanDouble(TrailingText trailing) {
    if (double value; scanPlain(current_, end_, value)) {
        current_ = end_;
        return value;
    }
    skipBlanks();
    if (atEnd()) return nothingBehindBlanks();
    const unsigned short* number = current_;
    const bool isNegative = readSign();
    if (current_ != number && (atEnd() || atBlank())) return nan;
    if (atHexadecimal()) {
        current_ = start_;
        return scanInteger(16, trailing);
    }
    const double value = finish(unsignedDouble(), trailing);
    return isNegative ? -value : value;
}

double NumberScan::scanInteger(int radix, TrailingText trailing) {
    skipBlanks();
    if (atEnd()) return nothingBehindBlanks();
    const bool isNegative = readSign();
    if (radix == 0) radix = atHexadecimal() ? 16 : 10;
    if (radix < 2 || radix > 36) return nan;
    const unsigned short* number = current_;
    if (radix == 16 && atHexadecimal()) current_ += 2;
    double value;
    if (!readInteger(radix, value)) {
        current_ = number;
        return nan;
    }
    value = finish(value, trailing);
    return isNegative ? -value : value;
}

bool NumberScan::atBlank() const {
    const bool isPrintable = *current_ > ' ' && *current_ <= '~';
    return !isPrintable && UnicodeUtils::isWS(*current_);
}

void NumberScan::skipBlanks() {
    while (!atEnd() && atBlank())
        ++current_;
}

bool NumberScan::readSign() {
    if (*current_ != '+' && *current_ != '-') return false;
    return *current_++ == '-';
}

bool NumberScan::skipWord(const char* word) {
    const unsigned short* unit = current_;
    for (; *word; ++word, ++unit) {
        if (unit == end_ || *unit != static_cast<unsigned char>(*word)) return false;
    }
    current_ = unit;
    return true;
}

bool NumberScan::atHexadecimal() const {
    return end_ - current_ >= 2 && current_[0] == '0' && (current_[1] | 0x20) == 'x';
}

/// A text of blanks alone is 0; one with a 0 unit in it ends there and is none.
double NumberScan::nothingBehindBlanks() {
    const bool isWholeText = current_ == end_;
    current_ = end_;
    return isWholeText ? 0 : nan;
}

double NumberScan::unsignedDouble() {
    if (*current_ == 'I' && skipWord("Infinity")) return infinity;
    if (*current_ == 'N' && skipWord("NaN")) return nan;
    const unsigned short* number = current_;
    Decimal decimal;
    readDigits(decimal);
    if (!decimal.hasDigits) {
        current_ = number;
        return nan;
    }
    readExponent(decimal);
    return decimal.value();
}

void NumberScan::readDigits(Decimal& decimal) {
    readRun(decimal, false);
    if (current_ == end_ || *current_ != '.') return;
    ++current_;
    readRun(decimal, true);
}

/// Reads the digits on one side of the point. Zeros in front take no place; the first 18 digits
/// make the mantissa, the 19th rounds it and those behind only count.
void NumberScan::readRun(Decimal& decimal, bool behindPoint) {
    const unsigned short* const start = current_;
    const unsigned short* const end = end_;
    const unsigned short* unit = start;
    if (decimal.digitCount == 0) {
        while (unit != end && *unit == '0')
            ++unit;
    }
    const unsigned short* const first = unit;
    const std::ptrdiff_t room = std::max(significantDigits - decimal.digitCount, 0);
    const unsigned short* const last = first + std::min(room, end - first);
    std::uint64_t mantissa = decimal.mantissa;
    for (std::uint64_t four; last - unit >= 4 && readFourDigits(unit, four); unit += 4) {
        mantissa = mantissa * 10000 + four;
    }
    for (; unit != last && isDigit(*unit); ++unit) {
        mantissa = mantissa * 10 + static_cast<unsigned int>(*unit - '0');
    }
    decimal.digitCount += static_cast<int>(unit - first);
    if (behindPoint) decimal.exponent -= static_cast<int>(unit - start);

    const unsigned short* const excess = unit;
    while (unit != end && isDigit(*unit))
        ++unit;
    if (unit != excess) {
        if (decimal.digitCount == significantDigits && *excess > '4') ++mantissa;
        decimal.digitCount += static_cast<int>(unit - excess);
        if (!behindPoint) decimal.exponent += static_cast<int>(unit - excess);
    }
    decimal.mantissa = mantissa;
    decimal.hasDigits |= unit != start;
    current_ = unit;
}

/// An "e" without digits behind it belongs to the text behind the number.
void NumberScan::readExponent(Decimal& decimal) {
    if (current_ == end_ || (*current_ | 0x20) != 'e') return;
    const unsigned short* unit = current_ + 1;
    bool isNegative = false;
    if (unit != end_ && (*unit == '+' || *unit == '-')) isNegative = *unit++ == '-';
    if (unit == end_ || !isDigit(*unit)) return;
    int exponent = 0;
    for (; unit != end_ && isDigit(*unit); ++unit) {
        exponent = exponent * 10 + (*unit - '0');
        if (exponent > largestWrittenExponent) exponent = largestWrittenExponent;
    }
    decimal.exponent += isNegative ? -exponent : exponent;
    current_ = unit;
}

bool NumberScan::readInteger(int radix, double& value) {
    const unsigned short* number = current_;
    const auto base = static_cast<unsigned int>(radix);
    std::uint64_t exact = 0;
    for (; current_ != end_ && exact < std::numeric_limits<std::uint64_t>::max() / 64; ++current_) {
        const int digit = digitValue(*current_);
        if (digit >= radix) break;
        exact = exact * base + static_cast<unsigned int>(digit);
    }
    value = static_cast<double>(exact);
    for (; current_ != end_ && digitValue(*current_) < radix; ++current_) {
        value = value * radix + digitValue(*current_);
    }
    return current_ != number;
}

double NumberScan::finish(double value, TrailingText trailing) const {
    if (current_ == end_ || trailing == TrailingText::Allowed) return value;
    return trailing == TrailingText::AfterBlank && atBlank() ? value : nan;
}

} // namespace KrCore
