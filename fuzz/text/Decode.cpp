// Decodes bytes with the encoder that the first byte chooses. What was decoded encodes to bytes
// that decode to the same text.

#include "support/FuzzInput.h"

#include <krcore/text/Encoder.h>

using namespace KrCore;

namespace {

constexpr const char* encoderNames[] = {"UTF-8",  "UTF-16LE", "UTF-16BE",  "UTF-32",
                                        "CP1252", "CP932",    "MACINTOSH", "ASCII"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    if (size == 0) return 0;
    const Encoder* encoder = Encoder::get(encoderNames[data[0] % 8]);
    if (!encoder) return 0; // The system does not know the page.

    String text;
    const auto* bytes = reinterpret_cast<const char*>(data + 1);
    if (text.decode(bytes, static_cast<int>(size - 1), encoder) != 0) return 0;

    if (!text.isEmpty() && text.wstr()[0] == 0xFEFF) return 0; // Read again, it would be a mark.

    const char* encoded = nullptr;
    int length = 0;
    if (text.encode(encoded, length, encoder) != 0)
        return 0; // A page may read more than it writes.
    String again;
    Fuzz::require(again.decode(encoded, length, encoder) == 0, "encoded text can be decoded");
    Fuzz::require(again == text, "encoded text decodes to itself");
    return 0;
}
