#pragma once

#include "text/encoders/Blocks.h"
#include "text/encoders/CodecEncoder.h"
#include "text/encoders/Surrogates.h"

namespace KrCore {

/// UTF-8 in its strict form: no overlong forms, no surrogates, nothing above U+10FFFF. A byte-order
/// mark is a character like any other.
class UTF8Codec {
public:
    template <class Sink>
    static Stop decode(ByteSource& source, Sink& sink, bool /*flush*/) {
        while (!source.isEmpty()) {
            if (*source.next < 0x80) {
                decodeAscii(source, sink);
                if (source.isEmpty()) break;
                if (*source.next < 0x80) return Stop::OutputFull;
            }
            const Stop stop = decodeSequences(source, sink);
            if (stop != Stop::InputEnd) return stop;
        }
        return Stop::InputEnd;
    }

    template <class Sink>
    static Stop encode(UnitSource& source, Sink& sink) {
        while (!source.isEmpty()) {
            if (*source.next < 0x80) {
                encodeAscii(source, sink);
                if (source.isEmpty()) break;
                if (*source.next < 0x80) return Stop::OutputFull;
            }
            const Stop stop = encodeSequences(source, sink);
            if (stop != Stop::InputEnd) return stop;
        }
        return Stop::InputEnd;
    }

private:
    /// One multi-byte sequence as found in the input.
    struct Sequence {
        Stop stop;          ///< InputEnd for a valid one
        int length;         ///< bytes
        unsigned int value; ///< the character
    };

    static bool isContinuation(unsigned int byte) { return (byte & 0xC0) == 0x80; }

    /// Whether the second byte makes a well-formed beginning with `lead` (E0 to F4): neither an
    /// overlong form, nor a surrogate, nor beyond the last plane.
    static bool fitsLead(unsigned int lead, unsigned int second) {
        switch (lead) {
        case 0xE0:
            return second >= 0xA0 && second <= 0xBF;
        case 0xED:
            return second >= 0x80 && second <= 0x9F;
        case 0xF0:
            return second >= 0x90 && second <= 0xBF;
        case 0xF4:
            return second >= 0x80 && second <= 0x8F;
        default:
            return isContinuation(second);
        }
    }

    /// Reads the sequence at `bytes`, whose first byte is 80 or above.
    static Sequence readSequence(const unsigned char* bytes, int remaining) {
        const unsigned int lead = bytes[0];
        if (lead < 0xC2 || lead > 0xF4) return {Stop::Invalid, 0, 0};
        const int length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        unsigned int value = lead & (0x7FU >> length);
        for (int i = 1; i < length; ++i) {
            if (i == remaining) return {Stop::Incomplete, 0, 0};
            const unsigned int byte = bytes[i];
            if (i == 1 ? !fitsLead(lead, byte) : !isContinuation(byte))
                return {Stop::Invalid, 0, 0};
            value = value << 6 | (byte & 0x3F);
        }
        return {Stop::InputEnd, length, value};
    }

    template <class Sink>
    static void decodeAscii(ByteSource& source, Sink& sink) {
        while (source.remaining() >= blockSize && sink.room() >= blockSize) {
            const int count = identicalBytes<Identity::Ascii>(source.next);
            sink.putWidened(source.next, count);
            source.next += count;
            if (count < blockSize) return;
        }
        while (!source.isEmpty() && *source.next < 0x80 && sink.room() > 0)
            sink.put(*source.next++);
    }

    /// Decodes until the next ASCII byte.
    template <class Sink>
    static Stop decodeSequences(ByteSource& source, Sink& sink) {
        while (!source.isEmpty() && *source.next >= 0x80) {
            if (source.remaining() >= 3 && sink.room() > 0 && decodeCommon(source, sink)) continue;
            const Sequence sequence = readSequence(source.next, source.remaining());
            if (sequence.stop != Stop::InputEnd) return sequence.stop;
            if (sink.room() < utf16Length(sequence.value)) return Stop::OutputFull;
            putUtf16(sink, sequence.value);
            source.next += sequence.length;
        }
        return Stop::InputEnd;
    }

    /// A well-formed sequence of two or three bytes, away from the ends of both buffers: nearly all
    /// text. False, with nothing read, for any other.
    template <class Sink>
    static bool decodeCommon(ByteSource& source, Sink& sink) {
        const unsigned char* bytes = source.next;
        const unsigned int lead = bytes[0];
        const unsigned int second = bytes[1] ^ 0x80U;
        if (second > 0x3F) return false;
        if (lead < 0xE0) {
            if (lead < 0xC2) return false;
            sink.put(static_cast<unsigned short>((lead & 0x1F) << 6 | second));
            source.next += 2;
            return true;
        }
        const unsigned int third = bytes[2] ^ 0x80U;
        if (lead > 0xEF || third > 0x3F) return false;
        const unsigned int value = (lead & 0xF) << 12 | second << 6 | third;
        if (value < 0x800 || isSurrogate(value)) return false;
        sink.put(static_cast<unsigned short>(value));
        source.next += 3;
        return true;
    }

    template <class Sink>
    static void encodeAscii(UnitSource& source, Sink& sink) {
        while (source.remaining() >= blockSize && sink.room() >= blockSize) {
            const int count = identicalUnits<Identity::Ascii>(source.next);
            sink.putNarrowed(source.next, count);
            source.next += count;
            if (count < blockSize) return;
        }
        while (!source.isEmpty() && *source.next < 0x80 && sink.room() > 0)
            sink.put(*source.next++);
    }

    /// Encodes until the next ASCII unit.
    template <class Sink>
    static Stop encodeSequences(UnitSource& source, Sink& sink) {
        while (!source.isEmpty() && *source.next >= 0x80) {
            unsigned int value = *source.next;
            int unitCount = 1;
            if (isSurrogate(value)) {
                const Stop stop = readPair(source.next, source.remaining(), value);
                if (stop != Stop::InputEnd) return stop;
                unitCount = 2;
            }
            const int length = value < 0x800 ? 2 : value < 0x10000 ? 3 : 4;
            if (sink.room() < length) return Stop::OutputFull;
            putSequence(sink, value, length);
            source.next += unitCount;
        }
        return Stop::InputEnd;
    }

    template <class Sink>
    static void putSequence(Sink& sink, unsigned int value, int length) {
        if (length == 2) {
            sink.put(0xC0 | value >> 6);
        } else {
            if (length == 3) {
                sink.put(0xE0 | value >> 12);
            } else {
                sink.put(0xF0 | value >> 18);
                sink.put(0x80 | (value >> 12 & 0x3F));
            }
            sink.put(0x80 | (value >> 6 & 0x3F));
        }
        sink.put(0x80 | (value & 0x3F));
    }
};

} // namespace KrCore
