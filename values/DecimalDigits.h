#pragma once

#include <cstdint>

namespace KrCore {

/// Digits are written eight at a time, so up to this many units behind the last one are
/// overwritten.
constexpr int digitSlack = 8;

/// 1 for 0.
int decimalDigitCount(std::uint64_t value);

/// Writes the decimal digits and returns how many they are.
int writeInteger(unsigned short* out, std::uint64_t value);

/// Writes the first `places` (0 to 16) digits of a fraction of 10^16 parts and returns how many of
/// them stand up to the last one that is not 0.
int writeFraction(unsigned short* out, std::uint64_t fraction, int places);

/// A decimal number as whole part and fraction of 10^16 parts.
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
