#pragma once

#include "text/encoders/Blocks.h"
#include "text/encoders/CodecEncoder.h"
#include "text/encoders/Surrogates.h"

#include <algorithm>
#include <cstdint>

namespace KrCore {

/// UTF-8 in its strict form: no overlong forms, no surrogates, nothing above U+10FFFF. A byte-order
/// mark is a character like any other.
class UTF8Codec {
public:
    template <class Sink>
    static Stop decode(ByteSource& source, Sink& sink, bool /*flush*/) {
        for (;;) {
            decodeRun(source, sink);
            if (source.isEmpty()) return Stop::InputEnd;
            const Sequence sequence = readSequence(source.next, source.remaining());
            if (sequence.stop != Stop::InputEnd) return sequence.stop;
            if (sink.room() < utf16Length(sequence.value)) return Stop::OutputFull;
            putUtf16(sink, sequence.value);
            source.next += sequence.length;
        }
    }

    template <class Sink>
    static Stop encode(UnitSource& source, Sink& sink) {
        for (;;) {
            encodeRun(source, sink);
            if (source.isEmpty()) return Stop::InputEnd;
            unsigned int value = *source.next;
            int unitCount = 1;
            if (isSurrogate(value)) {
                const Stop stop = readPair(source.next, source.remaining(), value);
                if (stop != Stop::InputEnd) return stop;
                unitCount = 2;
            }
            const int length = sequenceLength(value);
            if (sink.room() < length) return Stop::OutputFull;
            putSequence(sink, value, length);
            source.next += unitCount;
        }
    }

private:
    /// One character as found in the input.
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

    /// Reads the character at `bytes`.
    static Sequence readSequence(const unsigned char* bytes, int remaining) {
        const unsigned int lead = bytes[0];
        if (lead < 0x80) return {Stop::InputEnd, 1, lead};
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

    /// Decodes as far from the ends of both buffers as it can without testing for them, up to the
    /// first sequence that is not well-formed.
    template <class Sink>
    static void decodeRun(ByteSource& source, Sink& sink) {
        ByteSource in = source; // Copies that the compiler can keep in registers.
        Sink out = sink;
        while (in.remaining() >= blockSize && out.room() >= blockSize) {
            const std::uint32_t foreign = foreignBytes<Identity::Ascii>(in.next);
            const int count = identicalCount(foreign);
            out.putWidened(in.next, count);
            in.next += count;
            if (!foreign) {
                copyGroups<Identity::Ascii>(in, out);
                continue;
            }
            int safe = std::min(in.remaining() >> 2, out.room() >> 1);
            while (safe > 0 && decodeWord(in, out))
                --safe;
            if (in.isEmpty() || *in.next >= 0x80) break;
        }
        source = in;
        sink = out;
    }

    /// Decodes the sequence that four bytes of input begin with. False when it is ASCII or not
    /// well-formed.
    template <class Sink>
    static bool decodeWord(ByteSource& in, Sink& out) {
        const unsigned int word = static_cast<unsigned int>(in.next[0]) |
                                  static_cast<unsigned int>(in.next[1]) << 8 |
                                  static_cast<unsigned int>(in.next[2]) << 16 |
                                  static_cast<unsigned int>(in.next[3]) << 24;
        if ((word & 0x00C0C0F0) == 0x008080E0) {
            const unsigned int value =
                (word & 0xF) << 12 | (word >> 2 & 0xFC0) | (word >> 16 & 0x3F);
            if (value < 0x800 || isSurrogate(value)) return false;
            out.put(static_cast<unsigned short>(value));
            in.next += 3;
            return true;
        }
        if ((word & 0xC0E0) == 0x80C0) {
            if ((word & 0x1E) == 0) return false;
            out.put(static_cast<unsigned short>((word & 0x1F) << 6 | (word >> 8 & 0x3F)));
            in.next += 2;
            return true;
        }
        if ((word & 0xC0C0C0F8) != 0x808080F0) return false;
        const unsigned int value =
            (word & 0x7) << 18 | (word << 4 & 0x3F000) | (word >> 10 & 0xFC0) | (word >> 24 & 0x3F);
        if (value < 0x10000 || value > 0x10FFFF) return false;
        putUtf16(out, value);
        in.next += 4;
        return true;
    }

    /// Encodes likewise, up to the first surrogate without its other half.
    template <class Sink>
    static void encodeRun(UnitSource& source, Sink& sink) {
        UnitSource in = source;
        Sink out = sink;
        while (in.remaining() >= blockSize && out.room() >= blockSize) {
            const std::uint32_t foreign = foreignUnits<Identity::Ascii>(in.next);
            const int count = identicalCount(foreign);
            out.putNarrowed(in.next, count);
            in.next += count;
            if (!foreign) {
                copyGroups<Identity::Ascii>(in, out);
                continue;
            }
            int safe = std::min(in.remaining() >> 1, out.room() >> 2);
            while (safe > 0 && encodeWord(in, out))
                --safe;
            if (in.isEmpty() || *in.next >= 0x80) break;
        }
        source = in;
        sink = out;
    }

    /// Encodes the next character, two to four bytes. False when it is ASCII or half a pair.
    template <class Sink>
    static bool encodeWord(UnitSource& in, Sink& out) {
        unsigned int value = *in.next;
        if (value < 0x80) return false;
        if (value < 0x800) {
            out.putWord(0x80C0 | value >> 6 | (value & 0x3F) << 8, 2);
        } else if (!isSurrogate(value)) {
            out.putWord(threeBytes(value), 3);
        } else {
            if (readPair(in.next, 2, value) != Stop::InputEnd) return false;
            out.putWord(fourBytes(value), 4);
            ++in.next;
        }
        ++in.next;
        return true;
    }

    static int sequenceLength(unsigned int value) {
        return value < 0x80 ? 1 : value < 0x800 ? 2 : value < 0x10000 ? 3 : 4;
    }

    /// The three bytes of a character below U+10000 as a word, the first byte in the lowest place.
    static unsigned int threeBytes(unsigned int value) {
        return 0x8080E0 | value >> 12 | (value << 2 & 0x3F00) | (value & 0x3F) << 16;
    }

    static unsigned int fourBytes(unsigned int value) {
        return 0x808080F0 | value >> 18 | (value >> 4 & 0x3F00) | (value << 10 & 0x3F0000) |
               (value & 0x3F) << 24;
    }

    template <class Sink>
    static void putSequence(Sink& sink, unsigned int value, int length) {
        constexpr unsigned int leads[] = {0, 0, 0xC0, 0xE0, 0xF0};
        sink.put(leads[length] | value >> 6 * (length - 1));
        for (int shift = 6 * (length - 2); shift >= 0; shift -= 6)
            sink.put(0x80 | (value >> shift & 0x3F));
    }
};

} // namespace KrCore
