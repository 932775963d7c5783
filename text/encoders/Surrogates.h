#pragma once

#include "text/encoders/CodecEncoder.h"

namespace KrCore {

constexpr bool isSurrogate(unsigned int value) { return (value & 0xFFFFF800) == 0xD800; }
constexpr bool isHighSurrogate(unsigned int value) { return (value & 0xFFFFFC00) == 0xD800; }
constexpr bool isLowSurrogate(unsigned int value) { return (value & 0xFFFFFC00) == 0xDC00; }

constexpr int utf16Length(unsigned int character) { return character < 0x10000 ? 1 : 2; }

template <class Sink>
void putUtf16(Sink& sink, unsigned int character) {
    if (character < 0x10000) {
        sink.put(static_cast<unsigned short>(character));
        return;
    }
    sink.put(static_cast<unsigned short>(0xD7C0 + (character >> 10)));
    sink.put(static_cast<unsigned short>(0xDC00 | (character & 0x3FF)));
}

/// Reads the surrogate pair at `units`, which begins with a surrogate. `InputEnd` for a pair;
/// a high surrogate at the end of the input is `Incomplete`.
inline Stop readPair(const unsigned short* units, int remaining, unsigned int& character) {
    if (!isHighSurrogate(units[0])) return Stop::Invalid;
    if (remaining < 2) return Stop::Incomplete;
    if (!isLowSurrogate(units[1])) return Stop::Invalid;
    character = 0x10000U + ((units[0] & 0x3FFU) << 10 | (units[1] & 0x3FFU));
    return Stop::InputEnd;
}

} // namespace KrCore
