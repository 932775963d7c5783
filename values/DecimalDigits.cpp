#include "values/DecimalDigits.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace KrCore {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t powersOfTen[] = {1u,
                                         10u,
                                         100u,
                                         1000u,
                                         10000u,
                                         100000u,
                                         1000000u,
                                         10000000u,
                                         100000000u,
                                         1000000000u,
                                         10000000000u,
                                         100000000000u,
                                         1000000000000u,
                                         10000000000000u,
                                         100000000000000u,
                                         1000000000000000u,
                                         10000000000000000u,
                                         100000000000000000u,
                                         1000000000000000000u,
                                         10000000000000000000u};

constexpr int maximalPlaces = 15;

/// The units of 00 to 99, two at a time.
struct DigitPairs {
    unsigned short units[200];
    constexpr DigitPairs() : units() {
        for (int value = 0; value < 100; ++value) {
            units[2 * value] = static_cast<unsigned short>('0' + value / 10);
            units[2 * value + 1] = static_cast<unsigned short>('0' + value % 10);
        }
    }
};
constexpr DigitPairs digitPairs;

void writePair(unsigned short* out, unsigned int value) {
    std::memcpy(out, digitPairs.units + 2 * value, 2 * sizeof *out);
}

struct BinaryParts {
    std::uint64_t mantissa;
    int exponent;
};

/// magnitude = mantissa * 2^exponent, the mantissa below 2^53.
BinaryParts split(double magnitude) {
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const std::uint64_t fraction = bits & 0xFFFFFFFFFFFFFu;
    const int biased = static_cast<int>(bits >> 52 & 0x7FF);
    if (biased == 0) return {fraction, -1074};
    return {fraction | std::uint64_t(1) << 52, biased - 1075};
}

} // namespace

int decimalDigitCount(std::uint64_t value) {
    // 1233 / 4096 is a little more than the logarithm of 2; the comparison mends the estimate.
    const int estimate = static_cast<int>(std::bit_width(value | 1)) * 1233 >> 12;
    return estimate + (value >= powersOfTen[estimate] || value == 0 ? 1 : 0);
}

void writeDecimalDigits(unsigned short* out, std::uint64_t value, int count) {
    unsigned short* position = out + count;
    while (value > 0xFFFFFFFFu && position - out >= 8) {
        auto low = static_cast<std::uint32_t>(value % 100000000u);
        value /= 100000000u;
        for (int pair = 0; pair < 4; ++pair, low /= 100)
            writePair(position -= 2, low % 100);
    }
    auto rest = static_cast<std::uint32_t>(value);
    for (; position - out >= 2; rest /= 100)
        writePair(position -= 2, rest % 100);
    if (position != out) *out = static_cast<unsigned short>('0' + rest % 10);
}

bool roundToPlaces(double magnitude, int places, FixedDecimal& result) {
    const auto [mantissa, exponent] = split(magnitude);
    if (places > maximalPlaces || exponent > 0) return false;
    const int shift = -exponent;
    if (shift == 0) {
        result = {mantissa, 0};
        return true;
    }
    // The product of a fraction of 53 bits and 10^15 stays below 2^103: further shifts leave 0.
    if (shift > 104) {
        result = {0, 0};
        return true;
    }
    const std::uint64_t whole = shift < 64 ? mantissa >> shift : 0;
    const std::uint64_t fraction = shift < 64 ? mantissa - (whole << shift) : mantissa;
    const Wide product = Wide(fraction) * powersOfTen[places];
    const Wide half = Wide(1) << (shift - 1);
    const Wide remainder = product & ((half << 1) - 1);
    result = {whole, static_cast<std::uint64_t>(product >> shift)};
    const bool isOdd = ((places > 0 ? result.fraction : result.whole) & 1) != 0;
    if (remainder > half || (remainder == half && isOdd)) ++result.fraction;
    if (result.fraction == powersOfTen[places]) {
        result.fraction = 0;
        ++result.whole;
    }
    return true;
}

WholeNumber::WholeNumber(double magnitude) {
    const auto [mantissa, exponent] = split(std::trunc(magnitude));
    if (exponent <= 0) {
        const std::uint64_t value = -exponent < 64 ? mantissa >> -exponent : 0;
        limbs_[0] = static_cast<std::uint32_t>(value);
        limbs_[1] = static_cast<std::uint32_t>(value >> 32);
        limbCount_ = 2;
    } else {
        const int first = exponent / 32;
        Wide shifted = Wide(mantissa) << exponent % 32;
        for (int limb = first; limb < first + 3; ++limb, shifted >>= 32) {
            if (limb < maximalLimbs) limbs_[limb] = static_cast<std::uint32_t>(shifted);
        }
        limbCount_ = first + 3 < maximalLimbs ? first + 3 : maximalLimbs;
    }
    dropLeadingZeros();
}

unsigned int WholeNumber::divide(unsigned int divisor) {
    std::uint64_t remainder = 0;
    for (int limb = limbCount_ - 1; limb >= 0; --limb) {
        const std::uint64_t value = remainder << 32 | limbs_[limb];
        limbs_[limb] = static_cast<std::uint32_t>(value / divisor);
        remainder = value % divisor;
    }
    dropLeadingZeros();
    return static_cast<unsigned int>(remainder);
}

void WholeNumber::dropLeadingZeros() {
    while (limbCount_ > 0 && limbs_[limbCount_ - 1] == 0)
        --limbCount_;
}

} // namespace KrCore
