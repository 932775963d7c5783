#pragma once

#include "text/encoders/SingleByteCodec.h"
#include "text/encoders/UCSCodecs.h"
#include "text/encoders/UTF8Codec.h"

namespace KrCore {

/// One instance of each built-in encoder. They need no memory and hold nothing that would have to
/// be given back, so they are never destroyed, and a reference to one is good at any time.
struct BuiltInEncoders {
    BuiltInEncoders();

    const CodecEncoder<SingleByteCodec<Identity::Ascii>> ascii;
    const CodecEncoder<SingleByteCodec<Identity::All>> binary;
    const CodecEncoder<SingleByteCodec<Identity::AllButControls>> cp1252;
    const CodecEncoder<SingleByteCodec<Identity::AllButControls>> iso88591;
    const CodecEncoder<SingleByteCodec<Identity::Ascii>> macRoman;
    const CodecEncoder<UCS2Codec<UnitOrder::Marked>> ucs2;
    const CodecEncoder<UCS2Codec<UnitOrder::Big>> ucs2be;
    const CodecEncoder<UCS2Codec<UnitOrder::Little>> ucs2le;
    const CodecEncoder<UCS4Codec<UnitOrder::Marked>> ucs4;
    const CodecEncoder<UCS4Codec<UnitOrder::Big>> ucs4be;
    const CodecEncoder<UCS4Codec<UnitOrder::Little>> ucs4le;
    const CodecEncoder<UTF8Codec> utf8;

    static constexpr int count = 12;
    /// In the order of registration.
    const Encoder* const all[count];
};

/// Made on the first call, which is the start-up's or comes before it, while one thread runs.
const BuiltInEncoders& builtInEncoders();

} // namespace KrCore
