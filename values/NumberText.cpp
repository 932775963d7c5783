#include "values/NumberText.h"

#include "text/StringBuffer.h"
#include "values/DecimalDigits.h"

#include <krcore/text/String.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace KrCore {

namespace {

/// Fixed notation shows no more significant digits than this.
constexpr int significantDigits = 15;
/// What C's formatter takes for a negative precision.
constexpr int placesByDefault = 6;

constexpr double exponentFrom = 1e21;
constexpr double exponentBelow = 1e-6;

bool isWhole(double magnitude) { return std::trunc(magnitude) == magnitude; }

int clampPrecision(int precision) {
    return precision > NumberText::maximalPrecision ? NumberText::maximalPrecision : precision;
}

/// Digits before the point, 0 below 1. Counted from the number itself, as its logarithm rounds up
/// just below a power of ten. Every number from 1e18 on counts as one of 19 digits, since from 16
/// on the count makes no difference.
int digitsBeforePoint(double magnitude) {
    if (magnitude < 1) return 0;
    if (magnitude >= 1e18) return 19;
    return decimalDigitCount(static_cast<std::uint64_t>(magnitude));
}

/// Kept: from 16 digits before the point on, the places left are negative, and a negative precision
/// means 6 places (held by NumberText.CutsFixedNotationAtFifteenDigits).
int fixedPlaces(double magnitude, int precision) {
    const int places = significantDigits - digitsBeforePoint(magnitude);
    if (places < precision) precision = places;
    return precision < 0 ? placesByDefault : precision;
}

} // namespace

NumberText::NumberText(std::int32_t value) {
    if (value < 0) append('-');
    const std::int64_t wide = value;
    appendInteger(static_cast<std::uint64_t>(wide < 0 ? -wide : wide));
}

NumberText::NumberText(double value, int radix, int precision, NumberNotation notation) {
    format(value, radix, precision, notation);
}

void NumberText::format(double value, int radix, int precision, NumberNotation notation) {
    constexpr double largest = std::numeric_limits<double>::max();
    if (std::isnan(value)) return append("NaN");
    if (std::signbit(value) && (value != 0 || notation != NumberNotation::Shortest)) append('-');
    const double magnitude = std::fabs(value);
    if (std::isinf(value)) return append("Infinity");
    if (magnitude == largest) return append("1.7976931348623157e+308");
    if (radix == 10 || radix == 0) return appendDecimal(magnitude, precision, notation);

    length_ = 0;
    if (radix < 2 || radix > 36) return append("NaN");
    if (value <= -1) append('-');
    appendInRadix(magnitude, radix);
}

void NumberText::assignTo(String& text) const {
    text.adjust(length_); // and so not shared
    std::memcpy(StringBuffer::of(text)->units(), units_,
                static_cast<std::size_t>(length_) * sizeof *units_);
}

void NumberText::append(const char* text) {
    while (*text)
        append(*text++);
}

void NumberText::appendInteger(std::uint64_t value) {
    length_ += writeInteger(units_ + length_, value);
}

void NumberText::appendDecimal(double magnitude, int precision, NumberNotation notation) {
    precision = clampPrecision(precision);
    switch (notation) {
    case NumberNotation::Shortest:
        if (magnitude < exponentFrom && isWhole(magnitude)) {
            if (magnitude < 0x1p63) return appendInteger(static_cast<std::uint64_t>(magnitude));
            return appendFixed(magnitude, 0, notation);
        }
        if (magnitude >= exponentBelow && magnitude < exponentFrom) {
            return appendFixed(magnitude, fixedPlaces(magnitude, precision), notation);
        }
        return appendExponential(magnitude, precision, notation);
    case NumberNotation::Fixed: {
        const int start = length_;
        appendFixed(magnitude, fixedPlaces(magnitude, precision), notation);
        return finishMantissa(start, precision, notation);
    }
    case NumberNotation::Exponential:
        return appendExponential(magnitude, precision, notation);
    }
}

void NumberText::appendFixed(double magnitude, int precision, NumberNotation notation) {
    FixedDecimal exact;
    if (!roundToPlaces(magnitude, precision, exact)) {
        const int start = length_;
        char text[maximalPrecision + 320];
        const auto result =
            std::to_chars(text, text + sizeof text, magnitude, std::chars_format::fixed, precision);
        appendMantissa(text, result.ptr);
        if (notation == NumberNotation::Shortest) finishMantissa(start, precision, notation);
        return;
    }
    appendInteger(exact.whole);
    if (precision == 0) return;
    const int point = length_;
    append('.');
    const int places = writeFraction(units_ + length_, exact.fraction, precision);
    if (notation != NumberNotation::Shortest) {
        length_ += precision;
    } else {
        length_ = places > 0 ? length_ + places : point;
    }
}

void NumberText::appendExponential(double magnitude, int precision, NumberNotation notation) {
    const int start = length_;
    char text[maximalPrecision + 16];
    const auto result =
        std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific,
                      precision < 0 ? placesByDefault : precision);
    const char* exponentText = result.ptr;
    while (*--exponentText != 'e') {
    }
    appendMantissa(text, exponentText);
    finishMantissa(start, precision, notation);

    int exponent = 0;
    std::from_chars(exponentText + 2, result.ptr, exponent);
    appendExponent(exponentText[1] == '-' ? -exponent : exponent);
}

void NumberText::appendMantissa(const char* first, const char* last) {
    while (first != last)
        append(*first++);
}

void NumberText::appendExponent(int exponent) {
    append('e');
    append(exponent < 0 ? '-' : '+');
    appendInteger(static_cast<std::uint64_t>(exponent < 0 ? -exponent : exponent));
}

/// The shortest form ends with its last digit behind the point that is not 0; the other forms show
/// exactly the places that were asked for. Kept: places that could not be given are zeros, surplus
/// ones are cut off without rounding, and who asks for none gets what is there (held by
/// NumberText.CutsFixedNotationAtFifteenDigits).
void NumberText::finishMantissa(int start, int precision, NumberNotation notation) {
    int point = start;
    while (point < length_ && units_[point] != '.')
        ++point;
    if (notation == NumberNotation::Shortest) {
        if (point == length_) return;
        while (units_[length_ - 1] == '0')
            --length_;
        if (length_ - 1 == point) length_ = point;
        return;
    }
    if (precision == 0) return;
    if (precision < 0) precision = placesByDefault;
    if (point == length_) append('.');
    while (length_ - point - 1 < precision)
        append('0');
    length_ = point + 1 + precision;
}

void NumberText::appendInRadix(double magnitude, int radix) {
    WholeNumber rest(magnitude);
    int first = length_;
    do {
        append(
            "0123456789abcdefghijklmnopqrstuvwxyz"[rest.divide(static_cast<unsigned int>(radix))]);
    } while (!rest.isZero());
    for (int last = length_ - 1; first < last; ++first, --last) {
        std::swap(units_[first], units_[last]);
    }
}

} // namespace KrCore
