#pragma once

#include <cstdint>

namespace KrCore {

/// 1 for 0.
int decimalDigitCount(std::uint64_t value);

/// Writes `value`, which has `count` decimal digits or fewer, with zeros in front.
void writeDecimalDigits(unsigned short* out, std::uint64_t value, int count);

/// A number with its places behind the point as a second integer: 12.05 with 2 places is 12 and 5.
struct FixedDecimal {
    std::uint64_t whole;
    std::uint64_t fraction;
};

/// Rounds a finite number that is not negative to `places` behind the point, exactly, ties to the
/// even digit. False when the digits do not fit into 128-bit arithmetic: with more than 15 places,
/// and for numbers from 2^53 on.
bool roundToPlaces(double magnitude, int places, FixedDecimal& result);

/// The whole part of a finite number that is not negative, for division into digits of any base.
class WholeNumber {
public:
    explicit WholeNumber(double magnitude);
    bool isZero() const { return limbCount_ == 0; }
    /// Divides in place and returns the remainder.
    unsigned int divide(unsigned int divisor);

private:
    /// The largest double has 1024 bits.
    static constexpr int maximalLimbs = 33;

    void dropLeadingZeros();

    std::uint32_t limbs_[maximalLimbs] = {}; ///< Least significant first.
    int limbCount_ = 0;
};

} // namespace KrCore
