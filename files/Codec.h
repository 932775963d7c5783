#pragma once

#include <krcore/text/String.h>

namespace KrCore {

class Encoder;

/// How a file's bytes become text and back: an encoder, looked at from the middle of a text.
///
/// The encoders of UCS drop a byte-order mark in front of whatever they decode, and some take the
/// byte order from it. That is right at the beginning of a text; a block from the middle keeps its
/// U+FEFF, and its byte order is that of the whole file.
class Codec {
public:
    /// Null stands for the default encoder. `markName` is the encoding that the file's byte-order
    /// mark stands for, or null: it gives the order to an encoder that has none of its own.
    explicit Codec(const Encoder* encoder = nullptr, const char* markName = nullptr);

    /// As `Encoder::toUnicode`.
    int decode(const char* in, int& inCount, unsigned short* out, int& outCount, bool isAtStart,
               bool flush) const;
    /// As `Encoder::toMBCS` and `Encoder::getMBCSLength`.
    int encode(const unsigned short* in, int& inCount, char* out, int& outCount) const;
    /// Why the text cannot be encoded; 0 when it can.
    int check(const unsigned short* text, int count) const;

private:
    const Encoder* encoder_;
    int markLength_ = 0; ///< Bytes of the mark that the encoder drops; 0 when it drops none.
};

/// The first of an encoder's names.
String canonicalName(const Encoder& encoder);

} // namespace KrCore
