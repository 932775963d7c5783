#pragma once

#include "text/encoders/Sinks.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>
#include <krcore/text/String.h>

namespace KrCore {

/// Why a conversion ended.
enum class Stop {
    InputEnd,
    OutputFull, ///< The next character is valid and does not fit.
    Invalid,
    Incomplete ///< The end of the input cuts a sequence off that is valid so far.
};

/// The byte values and units of a conversion's input. A conversion advances `next` over whole
/// characters only. The next character is judged before the room for it: a buffer of exactly the
/// size that the length functions give still learns about an error behind it.
template <class Element>
struct Source {
    const Element* next;
    const Element* end;

    Source(const Element* begin, int count) : next(begin), end(begin + (count > 0 ? count : 0)) {}
    bool isEmpty() const { return next == end; }
    int remaining() const { return static_cast<int>(end - next); }
};

using ByteSource = Source<unsigned char>;
using UnitSource = Source<unsigned short>;

inline int errorCodeOf(Stop stop, bool flush) {
    switch (stop) {
    case Stop::InputEnd:
    case Stop::OutputFull:
        return ErrorCode::Ok;
    case Stop::Invalid:
        return ErrorCode::CharacterConversion;
    case Stop::Incomplete:
        return flush ? ErrorCode::PartialCharacter : ErrorCode::Ok;
    }
    return ErrorCode::Ok;
}

inline const unsigned char* unsignedBytes(const char* bytes) {
    return reinterpret_cast<const unsigned char*>(bytes);
}

/// The four conversions of an encoder on top of a codec: an object or a class with
/// `Stop decode(ByteSource&, Sink&, bool flush)` and `Stop encode(UnitSource&, Sink&)`.
template <class Codec>
class CodecConversions {
public:
    static int unicodeLength(const Codec& codec, const char* bytes, int count, int& consumed) {
        UnitCounter counter;
        ByteSource source(unsignedBytes(bytes), count);
        static_cast<void>(codec.decode(source, counter, true));
        consumed = static_cast<int>(source.next - unsignedBytes(bytes));
        return counter.written();
    }

    static int mbcsLength(const Codec& codec, const unsigned short* text, int count,
                          int& consumed) {
        ByteCounter counter;
        UnitSource source(text, count);
        static_cast<void>(codec.encode(source, counter));
        consumed = static_cast<int>(source.next - text);
        return counter.written();
    }

    static int toUnicode(const Codec& codec, const char* in, int& inCount, unsigned short* out,
                         int& outCount, bool flush) {
        UnitWriter writer(out, outCount);
        ByteSource source(unsignedBytes(in), inCount);
        const Stop stop = codec.decode(source, writer, flush);
        inCount = static_cast<int>(source.next - unsignedBytes(in));
        outCount = writer.written();
        return errorCodeOf(stop, flush);
    }

    static int toMBCS(const Codec& codec, const unsigned short* in, int& inCount, char* out,
                      int& outCount, bool flush) {
        ByteWriter writer(out, outCount);
        UnitSource source(in, inCount);
        const Stop stop = codec.encode(source, writer);
        inCount = static_cast<int>(source.next - in);
        outCount = writer.written();
        return errorCodeOf(stop, flush);
    }
};

/// An encoder that is a stateless codec with a name list.
template <class Codec>
class CodecEncoder : public Encoder {
public:
    constexpr CodecEncoder(int mapping, const char* names, Codec codec = {})
        : Encoder(mapping), names_(names), codec_(codec) {}

    void getName(String& name) const override { name = names_; }

    int getUnicodeLength(const char* bytes, int count, int& consumed) const override {
        return Conversions::unicodeLength(codec_, bytes, count, consumed);
    }
    int getMBCSLength(const unsigned short* text, int count, int& consumed) const override {
        return Conversions::mbcsLength(codec_, text, count, consumed);
    }
    int toUnicode(const char* in, int& inCount, unsigned short* out, int& outCount,
                  bool flush) const override {
        return Conversions::toUnicode(codec_, in, inCount, out, outCount, flush);
    }
    int toMBCS(const unsigned short* in, int& inCount, char* out, int& outCount,
               bool flush) const override {
        return Conversions::toMBCS(codec_, in, inCount, out, outCount, flush);
    }

private:
    using Conversions = CodecConversions<Codec>;

    const char* names_;
    [[no_unique_address]] Codec codec_;
};

} // namespace KrCore
