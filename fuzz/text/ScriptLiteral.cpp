// Reads text as a script literal; every text, written as a literal, reads back as itself.

#include "support/FuzzInput.h"

#include <krcore/containers/Array.h>

using namespace KrCore;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    const String text = Fuzz::asText(data, size);

    String rest = text;
    String value;
    if (rest.parse(value)) {
        Fuzz::require(rest.length() <= text.length(), "what is left is no longer than the text");
    } else {
        Fuzz::require(rest == text, "a literal that is refused stays");
    }

    String literal = text.escape(true);
    Fuzz::require(literal.parse(value) && literal.isEmpty(), "an escaped text is one literal");
    Fuzz::require(value == text, "an escaped text reads back as itself");

    Array array;
    if (array.parse(text, 0)) array.toString(value);
    return 0;
}
