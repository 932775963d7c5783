#pragma once

#include <cstdint>

namespace KrCore {

class String;

/// How a decimal number is written. `Shortest` takes whole numbers below 1e21 as they are, leaves
/// out zeros behind the last digit and turns to an exponent below 1e-6 and from 1e21 on.
enum class NumberNotation : int { Shortest = 0, Fixed = 1, Exponential = 2 };

/// The text of a number, the same bytes on every system and in every locale.
///
/// Digits are rounded correctly from the exact value, ties to the even digit. Fixed notation shows
/// at most 15 significant digits; places beyond are zeros. `Shortest` with 15 places is the form
/// that scripts see, which is not the shortest one that scans back to the same number.
class NumberText {
public:
    static constexpr int defaultPrecision = 15;
    static constexpr int maximalPrecision = 100;

    explicit NumberText(std::int32_t value);
    /// `radix` 2 to 36 writes the whole part in that base, 10 and 0 are decimal, any other gives
    /// "NaN". `precision` counts the places behind the point; a negative one means 6, one above 100
    /// means 100.
    NumberText(double value, int radix, int precision = defaultPrecision,
               NumberNotation notation = NumberNotation::Shortest);

    const unsigned short* units() const { return units_; }
    int length() const { return length_; }
    void assignTo(String& text) const;

private:
    void format(double value, int radix, int precision, NumberNotation notation);
    void append(char ch) { units_[length_++] = static_cast<unsigned char>(ch); }
    void append(const char* text);
    void appendInteger(std::uint64_t value);
    void appendDecimal(double magnitude, int precision, NumberNotation notation);
    void appendFixed(double magnitude, int precision, NumberNotation notation);
    void appendExponential(double magnitude, int precision, NumberNotation notation);
    void appendMantissa(const char* first, const char* last);
    void appendExponent(int exponent);
    void finishMantissa(int start, int precision, NumberNotation notation);
    void appendInRadix(double magnitude, int radix);

    /// Room for the largest number in base 2, and for the digits behind the last.
    static constexpr int capacity = 1040;

    int length_ = 0;
    unsigned short units_[capacity];
};

} // namespace KrCore
