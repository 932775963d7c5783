// Compiles the first line of the input and searches the rest with it: the captures lie within the
// subject, and searching again gives the same.

#include "support/FuzzInput.h"

#include <krcore/regexp/RegExp.h>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace KrCore;

namespace {

/// How much of the subject may be searched: the time may grow with its length to the power of the
/// choices in the pattern. -1 when there are too many for any.
int boundedLength(const String& pattern, int length) {
    constexpr double mostWays = 50000;
    int choices = 1;
    for (const unsigned short unit : pattern)
        choices += unit == '*' || unit == '+' || unit == '?' || unit == '{' || unit == '|';
    int bounded = std::min(length, 64);
    while (bounded >= 0 && std::pow(bounded + 3, choices) > mostWays)
        --bounded;
    return bounded;
}

using Captures = std::unique_ptr<Capture[]>;

void checkCaptures(const RegExp& expression, const Captures& captures, int start, int length,
                   bool isFound) {
    const int count = expression.getCaptureLength();
    for (int slot = 0; slot < count; ++slot) {
        const Capture& capture = captures[std::size_t(slot)];
        if (!isFound) Fuzz::require(capture.start == -1, "nothing is captured without a match");
        if (capture.start == -1) continue;
        Fuzz::require(capture.start >= 0 && capture.start <= capture.end && capture.end <= length,
                      "a capture lies within the subject");
    }
    if (isFound && count > 0)
        Fuzz::require(captures[0].start >= start, "a match begins at the start or behind");
}

void checkSame(const RegExp& expression, const Captures& captures, const Captures& again) {
    for (std::size_t slot = 0; slot < std::size_t(expression.getCaptureLength()); ++slot) {
        const bool isSame = captures[slot].start == again[slot].start &&
                            (captures[slot].start == -1 || captures[slot].end == again[slot].end);
        Fuzz::require(isSame, "a second search captures the same");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    if (size < 1) return 0;
    // "@" and the letters behind it stand for the flags, "0" and the digits for a start at 1.
    const int flags = data[0] & 7;
    const int start = data[0] >> 4 & 1;
    const String text = Fuzz::asText(data + 1, size - 1);
    const int lineEnd = std::max(text.find('\n'), 0);
    const String pattern = text.substr(0, lineEnd);
    const RegExp expression(pattern, flags);
    Fuzz::require(expression.getPattern() == pattern, "the pattern stays");
    Fuzz::require(expression.good() == (expression.getCaptureLength() > 0), "a match has a slot");

    const String rest = text.substr(lineEnd + 1);
    const int length = boundedLength(pattern, rest.length());
    if (length < 0) return 0;
    const String subject = rest.substr(0, length);
    const Captures captures(expression.createCaptureList());
    const bool isFound = expression.match(subject, start, captures[0]);
    checkCaptures(expression, captures, start, subject.length(), isFound);

    const RegExp copy = expression;
    const Captures again(copy.createCaptureList());
    Fuzz::require(copy.match(subject, start, again[0]) == isFound,
                  "a second search finds the same");
    checkSame(expression, captures, again);
    return 0;
}
