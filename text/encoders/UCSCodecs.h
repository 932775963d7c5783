#pragma once

#include "text/encoders/Surrogates.h"

#include <bit>

namespace KrCore {

/// The order of the bytes of a UCS text. `Marked` is the order of the machine, unless the text
/// begins with the mark of the other one.
enum class UnitOrder { Marked, Big, Little };

/// The byte-order mark of a UCS text and what it means. No encoder writes one, and a decoder drops
/// the one that its input begins with; since encoders have no memory, this goes for each piece of a
/// text that is decoded in pieces.
constexpr unsigned int byteOrderMark = 0xFEFF;

constexpr bool isNativelyBig = std::endian::native == std::endian::big;

template <UnitOrder order>
constexpr bool isBigByDefault = order == UnitOrder::Big ||
                                (order == UnitOrder::Marked && isNativelyBig);

/// Integers of `byteCount` bytes as they lie in a UCS text.
template <int byteCount>
struct WideInteger {
    static unsigned int read(const unsigned char* bytes, bool isBig) {
        unsigned int value = 0;
        for (int i = 0; i < byteCount; ++i)
            value |= static_cast<unsigned int>(bytes[i]) << 8 * (isBig ? byteCount - 1 - i : i);
        return value;
    }

    template <class Sink>
    static void write(Sink& sink, unsigned int value, bool isBig) {
        for (int i = 0; i < byteCount; ++i)
            sink.put(value >> 8 * (isBig ? byteCount - 1 - i : i) & 0xFF);
    }

    /// Skips a mark at the front of `source` and returns the order of the text behind it.
    template <UnitOrder order>
    static bool skipMark(ByteSource& source) {
        const bool isBig = isBigByDefault<order>;
        if (source.remaining() < byteCount) return isBig;
        if (read(source.next, isBig) == byteOrderMark) {
            source.next += byteCount;
        } else if (order == UnitOrder::Marked && read(source.next, !isBig) == byteOrderMark) {
            source.next += byteCount;
            return !isBig;
        }
        return isBig;
    }
};

/// Units of 16 bits, one for one: any sequence of units makes the round trip, lone surrogates
/// included.
template <UnitOrder order>
class UCS2Codec {
public:
    template <class Sink>
    static Stop decode(ByteSource& source, Sink& sink, bool /*flush*/) {
        return Wide::template skipMark<order>(source) ? decodeUnits<true>(source, sink)
                                                      : decodeUnits<false>(source, sink);
    }

    template <class Sink>
    static Stop encode(UnitSource& source, Sink& sink) {
        const int count = smaller(source.remaining(), sink.room() / 2);
        for (int i = 0; i < count; ++i)
            Wide::write(sink, source.next[i], isBigByDefault<order>);
        source.next += count;
        return source.isEmpty() ? Stop::InputEnd : Stop::OutputFull;
    }

private:
    using Wide = WideInteger<2>;

    static int smaller(int a, int b) { return a < b ? a : b; }

    template <bool isBig, class Sink>
    static Stop decodeUnits(ByteSource& source, Sink& sink) {
        const int count = smaller(source.remaining() / 2, sink.room());
        for (int i = 0; i < count; ++i)
            sink.put(static_cast<unsigned short>(Wide::read(source.next + 2 * i, isBig)));
        source.next += 2 * count;
        if (source.isEmpty()) return Stop::InputEnd;
        return source.remaining() < 2 ? Stop::Incomplete : Stop::OutputFull;
    }
};

/// Characters of 32 bits: no surrogates, nothing above U+10FFFF.
template <UnitOrder order>
class UCS4Codec {
public:
    template <class Sink>
    static Stop decode(ByteSource& source, Sink& sink, bool /*flush*/) {
        const bool isBig = Wide::template skipMark<order>(source);
        while (source.remaining() >= 4) {
            const unsigned int value = Wide::read(source.next, isBig);
            if (value > 0x10FFFF || isSurrogate(value)) return Stop::Invalid;
            if (sink.room() < utf16Length(value)) return Stop::OutputFull;
            putUtf16(sink, value);
            source.next += 4;
        }
        return source.isEmpty() ? Stop::InputEnd : Stop::Incomplete;
    }

    template <class Sink>
    static Stop encode(UnitSource& source, Sink& sink) {
        while (!source.isEmpty()) {
            unsigned int value = *source.next;
            int unitCount = 1;
            if (isSurrogate(value)) {
                const Stop stop = readPair(source.next, source.remaining(), value);
                if (stop != Stop::InputEnd) return stop;
                unitCount = 2;
            }
            if (sink.room() < 4) return Stop::OutputFull;
            Wide::write(sink, value, isBigByDefault<order>);
            source.next += unitCount;
        }
        return Stop::InputEnd;
    }

private:
    using Wide = WideInteger<4>;
};

} // namespace KrCore
