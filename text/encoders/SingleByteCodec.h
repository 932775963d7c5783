#pragma once

#include "text/encoders/Blocks.h"
#include "text/encoders/ByteTable.h"
#include "text/encoders/CodecEncoder.h"

namespace KrCore {

/// The conversions of a character set of single bytes. `identity` names bytes that the table maps
/// to themselves; whole blocks of them take no table look-up.
template <Identity identity>
class SingleByteCodec {
public:
    explicit constexpr SingleByteCodec(const ByteTable& table) : table_(&table) {}

    template <class Sink>
    Stop decode(ByteSource& source, Sink& sink, bool /*flush*/) const {
        return onCopies(source, sink,
                        [this](ByteSource& in, Sink& out) { return decodeAll(in, out); });
    }

    template <class Sink>
    Stop encode(UnitSource& source, Sink& sink) const {
        return onCopies(source, sink,
                        [this](UnitSource& in, Sink& out) { return encodeAll(in, out); });
    }

private:
    template <class Sink>
    Stop decodeAll(ByteSource& source, Sink& sink) const {
        while (source.remaining() >= blockSize && sink.room() >= blockSize) {
            const std::uint32_t foreign = foreignBytes<identity>(source.next);
            const bool isDone = hasFew(foreign) ? decodeBlock(source, sink, foreign)
                                                : decodeBytes(source, sink, blockSize);
            if (!isDone) return Stop::Invalid;
        }
        const int count = source.remaining() < sink.room() ? source.remaining() : sink.room();
        if (!decodeBytes(source, sink, count)) return Stop::Invalid;
        if (source.isEmpty()) return Stop::InputEnd;
        return table_->units[*source.next] == ByteTable::noUnit ? Stop::Invalid : Stop::OutputFull;
    }

    template <class Sink>
    Stop encodeAll(UnitSource& source, Sink& sink) const {
        while (source.remaining() >= blockSize && sink.room() >= blockSize) {
            const std::uint32_t foreign = foreignUnits<identity>(source.next);
            const bool isDone = hasFew(foreign) ? encodeBlock(source, sink, foreign)
                                                : encodeUnits(source, sink, blockSize);
            if (!isDone) return Stop::Invalid;
        }
        const int count = source.remaining() < sink.room() ? source.remaining() : sink.room();
        if (!encodeUnits(source, sink, count)) return Stop::Invalid;
        if (source.isEmpty()) return Stop::InputEnd;
        return table_->byteOf(*source.next) == ByteTable::noByte ? Stop::Invalid : Stop::OutputFull;
    }

    /// Whether it pays to take a block as a whole and then look up its few foreign characters.
    static bool hasFew(std::uint32_t foreign) {
        foreign &= foreign - 1;
        foreign &= foreign - 1;
        foreign &= foreign - 1;
        return (foreign & (foreign - 1)) == 0;
    }

    /// Widens a block and replaces the units of its foreign bytes. Stops in front of a byte that
    /// means nothing.
    template <class Sink>
    bool decodeBlock(ByteSource& source, Sink& sink, std::uint32_t foreign) const {
        sink.putWidened(source.next, blockSize);
        for (; foreign; foreign &= foreign - 1) {
            const int index = std::countr_zero(foreign);
            const unsigned short unit = table_->units[source.next[index]];
            if (unit == ByteTable::noUnit) {
                sink.advance(index - blockSize);
                source.next += index;
                return false;
            }
            sink.replace(blockSize - index, unit);
        }
        source.next += blockSize;
        return true;
    }

    template <class Sink>
    bool encodeBlock(UnitSource& source, Sink& sink, std::uint32_t foreign) const {
        sink.putNarrowed(source.next, blockSize);
        for (; foreign; foreign &= foreign - 1) {
            const int index = std::countr_zero(foreign);
            const int byte = table_->byteOf(source.next[index]);
            if (byte == ByteTable::noByte) {
                sink.advance(index - blockSize);
                source.next += index;
                return false;
            }
            sink.replace(blockSize - index, static_cast<unsigned int>(byte));
        }
        source.next += blockSize;
        return true;
    }

    template <class Sink>
    bool decodeBytes(ByteSource& source, Sink& sink, int count) const {
        for (const unsigned char* end = source.next + count; source.next != end; ++source.next) {
            const unsigned short unit = table_->units[*source.next];
            if (unit == ByteTable::noUnit) return false;
            sink.put(unit);
        }
        return true;
    }

    template <class Sink>
    bool encodeUnits(UnitSource& source, Sink& sink, int count) const {
        for (const unsigned short* end = source.next + count; source.next != end; ++source.next) {
            const int byte = table_->byteOf(*source.next);
            if (byte == ByteTable::noByte) return false;
            sink.put(static_cast<unsigned int>(byte));
        }
        return true;
    }

    const ByteTable* table_;
};

} // namespace KrCore
