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
constexpr int fractionPlaces = 16;

static_assert(std::endian::native == std::endian::little, "digits are packed first digit lowest");

/// The eight decimal digits of a number below 10^8, one in each byte, the first in the lowest.
/// Halves of four, quarters of two and single digits are divided side by side within one word.
std::uint64_t packDigits(std::uint32_t value) {
    const std::uint64_t fours = value / 10000 | std::uint64_t(value % 10000) << 32;
    const std::uint64_t hundreds = (fours * 10486 >> 20) & 0x0000007F0000007Fu;
    const std::uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
    const std::uint64_t tens = (twos * 103 >> 10) & 0x000F000F000F000Fu;
    return tens | (twos - tens * 10) << 8;
}

void writePacked(unsigned short* out, std::uint64_t digits) {
    digits |= 0x3030303030303030u;
    unsigned char bytes[8];
    std::memcpy(bytes, &digits, sizeof bytes);
    for (int index = 0; index < 8; ++index)
        out[index] = bytes[index];
}

/// Writes a number below 10^8 without zeros in front.
int writeFront(unsigned short* out, std::uint32_t value) {
    if (value < 10) {
        *out = static_cast<unsigned short>('0' + value);
        return 1;
    }
    const std::uint64_t digits = packDigits(value);
    const int zeros = std::countr_zero(digits) / 8;
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): some digit is not 0.
    writePacked(out, digits >> 8 * zeros);
    return 8 - zeros;
}

int significantLength(std::uint64_t digits) { return 8 - std::countl_zero(digits) / 8; }

constexpr std::uint64_t tenToEight = 100000000u;

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

int writeInteger(unsigned short* out, std::uint64_t value) {
    if (value < tenToEight) return writeFront(out, static_cast<std::uint32_t>(value));
    const int length = writeInteger(out, value / tenToEight);
    writePacked(out + length, packDigits(static_cast<std::uint32_t>(value % tenToEight)));
    return length + 8;
}

int writeFraction(unsigned short* out, std::uint64_t fraction, int places) {
    const std::uint64_t front = packDigits(static_cast<std::uint32_t>(fraction / tenToEight));
    const std::uint64_t back = packDigits(static_cast<std::uint32_t>(fraction % tenToEight));
    writePacked(out, front);
    if (places > 8) writePacked(out + 8, back);
    return back ? 8 + significantLength(back) : significantLength(front);
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
    auto parts = static_cast<std::uint64_t>(product >> shift);
    const bool isOdd = ((places > 0 ? parts : whole) & 1) != 0;
    if (remainder > half || (remainder == half && isOdd)) ++parts;
    const bool carries = parts == powersOfTen[places];
    result.whole = carries ? whole + 1 : whole;
    result.fraction = carries ? 0 : parts * powersOfTen[fractionPlaces - places];
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
