#pragma once

namespace KrCore {

/// The 32-bit code of four characters, the first in the most significant byte: message IDs,
/// property IDs and type tags are written so, for example `fourCharCode("loGe")`. A code whose
/// first byte is above 127 is negative.
constexpr int fourCharCode(const char (&text)[5]) {
    const auto byte = [&text](int index) {
        return static_cast<unsigned int>(static_cast<unsigned char>(text[index]));
    };
    return static_cast<int>(byte(0) << 24U | byte(1) << 16U | byte(2) << 8U | byte(3));
}

} // namespace KrCore
