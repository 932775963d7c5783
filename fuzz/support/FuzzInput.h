#pragma once

#include <krcore/foundation/InitTerm.h>
#include <krcore/text/String.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace Fuzz {

/// Starts the library with the first input.
inline void startLibrary() {
    static const bool isStarted = [] {
        KrCore::InitTerm::init();
        return true;
    }();
    static_cast<void>(isStarted);
}

/// The input as text: UTF-16 in little-endian order behind a byte-order mark, else a byte a unit,
/// so that seeds can be written by hand.
inline KrCore::String asText(const std::uint8_t* data, std::size_t size) {
    const bool isWide = size >= 2 && data[0] == 0xFF && data[1] == 0xFE;
    KrCore::String text;
    if (isWide) {
        for (std::size_t i = 2; i + 1 < size; i += 2)
            text.append(static_cast<unsigned short>(data[i] | data[i + 1] << 8));
    } else {
        for (std::size_t i = 0; i < size; ++i)
            text.append(static_cast<unsigned short>(data[i]));
    }
    return text;
}

/// Ends the program, so that the fuzzer keeps the input.
inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

} // namespace Fuzz
