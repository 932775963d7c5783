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
        while (source.remaining() >= blockSize && sink.room() >= blockSize) {
            if (identicalBytes<identity>(source.next) == blockSize) {
                sink.putWidened(source.next, blockSize);
                source.next += blockSize;
            } else if (!decodeBytes(source, sink, blockSize)) {
                return Stop::Invalid;
            }
        }
        const int count = source.remaining() < sink.room() ? source.remaining() : sink.room();
        if (!decodeBytes(source, sink, count)) return Stop::Invalid;
        if (source.isEmpty()) return Stop::InputEnd;
        return table_->units[*source.next] == ByteTable::noUnit ? Stop::Invalid : Stop::OutputFull;
    }

    template <class Sink>
    Stop encode(UnitSource& source, Sink& sink) const {
        while (source.remaining() >= blockSize && sink.room() >= blockSize) {
            if (identicalUnits<identity>(source.next) == blockSize) {
                sink.putNarrowed(source.next, blockSize);
                source.next += blockSize;
            } else if (!encodeUnits(source, sink, blockSize)) {
                return Stop::Invalid;
            }
        }
        const int count = source.remaining() < sink.room() ? source.remaining() : sink.room();
        if (!encodeUnits(source, sink, count)) return Stop::Invalid;
        if (source.isEmpty()) return Stop::InputEnd;
        return table_->byteOf(*source.next) == ByteTable::noByte ? Stop::Invalid : Stop::OutputFull;
    }

private:
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
