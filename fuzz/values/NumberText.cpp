// Reads text as a number; what it prints as reads back as nearly the same number.

#include "support/FuzzInput.h"

#include <krcore/values/Variant.h>

#include <cmath>

using namespace KrCore;

namespace {

/// Neither way is exact: the text has 15 or 16 digits, and below 1 no more than 15 places behind
/// the point; the scanner multiplies rounded powers.
bool isNear(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    if (std::isinf(a) || std::isinf(b)) return a == b;
    return std::fabs(a - b) <= std::fabs(a) * 1e-13 + 1e-15;
}

/// Close to the ends of the range the scanner leaves it: to zero or to infinity.
bool isWellInside(double value) {
    const double size = std::fabs(value);
    return !std::isfinite(value) || size == 0 || (size > 1e-290 && size < 1e290);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    if (size == 0) return 0;
    const String text = Fuzz::asText(data + 1, size - 1);
    String rest;
    const double value = Variant::scanDouble(text, data[0] % 3, &rest);
    Fuzz::require(text.substr(text.length() - rest.length()) == rest, "the rest ends the text");

    if (isWellInside(value)) {
        const double again = Variant::scanDouble(Variant(value).getString(), 0, nullptr);
        Fuzz::require(isNear(value, again), "a printed number reads back");
    }
    Variant::scanInteger(text, data[0] % 40, 2, &rest);
    return 0;
}
