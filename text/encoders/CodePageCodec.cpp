#include "text/encoders/CodePageCodec.h"

#include "text/encoders/CodePageNumbers.h"
#include "text/encoders/SingleByteCodec.h"
#include "text/encoders/Surrogates.h"
#include "text/encoders/UTF8Codec.h"

#include <algorithm>

namespace KrCore {

namespace {

/// Precomposed characters, and an error for invalid ones.
constexpr unsigned int strictDecoding = 9;
constexpr unsigned int noFlags = 0;

/// The pages whose conversion in the system refuses flags.
unsigned int decodeFlagsOf(int page) {
    using namespace CodePageNumber;
    const bool isIscii = page >= firstIscii && page <= lastIscii;
    const bool isIso2022 = (page >= firstIso2022 && page <= lastIso2022Japanese) ||
                           page == iso2022Korean || page == iso2022Chinese ||
                           page == iso2022TraditionalChinese;
    const bool isUnicode = page == utf7 || page == utf8 || page == gb18030;
    return isIscii || isIso2022 || isUnicode || page == hz ? noFlags : strictDecoding;
}

/// No page needs more bytes for one character, its switches from the initial state and back
/// included.
constexpr int maxCharacterBytes = 32;
constexpr int maxStatelessBytes = 4;
/// How much a page without states is given at a time.
constexpr int batchSize = 512;

/// Room for the units of one stretch: on the stack unless the stretch is long.
class ScratchUnits {
public:
    explicit ScratchUnits(int capacity)
        : capacity_(std::max(capacity, localCapacity)),
          units_(capacity > localCapacity ? allocate(capacity) : local_) {}
    ~ScratchUnits() {
        if (units_ != local_) Heap::operator delete(units_);
    }
    ScratchUnits(const ScratchUnits&) = delete;
    ScratchUnits& operator=(const ScratchUnits&) = delete;

    unsigned short* get() { return units_; }
    int capacity() const { return capacity_; }

private:
    static constexpr int localCapacity = batchSize;

    static unsigned short* allocate(int capacity) {
        return static_cast<unsigned short*>(
            Heap::operator new(static_cast<std::size_t>(capacity) * sizeof(unsigned short)));
    }

    unsigned short local_[localCapacity];
    int capacity_;
    unsigned short* units_;
};

const char* signedBytes(const unsigned char* bytes) { return reinterpret_cast<const char*>(bytes); }

int characterLength(const unsigned short* text, int count) {
    return count > 1 && isHighSurrogate(text[0]) && isLowSurrogate(text[1]) ? 2 : 1;
}

/// As much of `count` units as does not end between the halves of a pair.
int wholeCharacters(const unsigned short* text, int count) {
    return count > 0 && isHighSurrogate(text[count - 1]) ? count - 1 : count;
}

} // namespace

CodePageCodec::CodePageCodec(int page)
    : number_(page), page_(page, decodeFlagsOf(page), noFlags), shape_(page), kind_(examine()) {}

CodePageCodec::~CodePageCodec() { Heap::operator delete[](blocks_); }

CodePageCodec::Kind CodePageCodec::examine() {
    if (number_ == CodePageNumber::utf8) return Kind::Utf8;
    if (shape_.hasStates()) return Kind::Stateful;
    page_.findLeadBytes(shape_.leadBytes());
    readTable();
    if (shape_.hasLeadBytes()) return hasAsciiUnits() ? Kind::MultiByteAscii : Kind::MultiByte;
    const int blockCount = table_.assignBlocks();
    const std::size_t byteCount = static_cast<std::size_t>(blockCount) * sizeof(ByteTable::Block);
    blocks_ = static_cast<ByteTable::Block*>(Heap::operator new[](byteCount));
    std::memset(blocks_, 0, byteCount);
    table_.fillBlocks(blocks_);
    return hasAsciiUnits() ? Kind::SingleByteAscii : Kind::SingleByte;
}

void CodePageCodec::readTable() {
    for (int byte = 0; byte < 256; ++byte) {
        const char in = static_cast<char>(byte);
        unsigned short units[4];
        table_.units[byte] = page_.decode(&in, 1, units, 4) == 1 ? units[0] : ByteTable::noUnit;
    }
}

bool CodePageCodec::hasAsciiUnits() const {
    for (int byte = 0; byte < 0x80; ++byte) {
        if (table_.units[byte] != byte) return false;
    }
    return true;
}

template <class Sink>
Stop CodePageCodec::decode(ByteSource& source, Sink& sink, bool flush) const {
    switch (kind_) {
    case Kind::SingleByte:
        return SingleByteCodec<Identity::None>(table_).decode(source, sink, flush);
    case Kind::SingleByteAscii:
        return SingleByteCodec<Identity::Ascii>(table_).decode(source, sink, flush);
    case Kind::MultiByte:
    case Kind::MultiByteAscii:
    case Kind::Stateful:
        return decodeStretches(source, sink, flush);
    case Kind::Utf8:
        return UTF8Codec::decode(source, sink, flush);
    }
    return Stop::Invalid;
}

template <class Sink>
Stop CodePageCodec::encode(UnitSource& source, Sink& sink) const {
    switch (kind_) {
    case Kind::SingleByte:
    case Kind::SingleByteAscii:
        return encodeSingleBytes(source, sink);
    case Kind::MultiByte:
    case Kind::MultiByteAscii:
        return encodeBatches(source, sink);
    case Kind::Stateful:
        return encodeWithStates(source, sink);
    case Kind::Utf8:
        return UTF8Codec::encode(source, sink);
    }
    return Stop::Invalid;
}

/// The closed stretches at the front of `source`, as many as have no more than `limit` bytes.
int CodePageCodec::closedLength(const ByteSource& source, int limit) const {
    int length = 0;
    while (length < source.remaining()) {
        const auto stretch = shape_.measure(source.next + length, source.remaining() - length);
        if (stretch.kind != CodePageShape::Stretch::Closed) break;
        if (stretch.length > limit - length) break;
        length += stretch.length;
    }
    return length;
}

template <class Sink>
Stop CodePageCodec::decodeStretches(ByteSource& source, Sink& sink, bool flush) const {
    using Stretch = CodePageShape::Stretch;
    while (!source.isEmpty()) {
        if (kind_ == Kind::MultiByteAscii) copyAscii(source, sink);
        const int batch = closedLength(source, std::min(sink.room(), batchSize));
        if (batch > 0 && decodeStretch(source, sink, batch) == Stop::InputEnd) continue;
        if (source.isEmpty()) break;
        Stretch stretch = shape_.measure(source.next, source.remaining());
        if (stretch.kind == Stretch::Wrong) return Stop::Invalid;
        if (stretch.kind == Stretch::Open && flush) stretch.length = source.remaining();
        if (stretch.length == 0) return Stop::Incomplete;
        const Stop stop = decodeStretch(source, sink, stretch.length);
        if (stop != Stop::InputEnd) return stop;
    }
    return Stop::InputEnd;
}

template <class Sink>
Stop CodePageCodec::decodeStretch(ByteSource& source, Sink& sink, int length) const {
    ScratchUnits units(length); // No page decodes to more units than bytes.
    const int count = page_.decode(signedBytes(source.next), length, units.get(), units.capacity());
    if (count < 0) return Stop::Invalid;
    if (count > sink.room()) return Stop::OutputFull;
    sink.put(units.get(), count);
    source.next += length;
    return Stop::InputEnd;
}

/// The system may have a near byte for a unit that stands in no place of the table.
template <class Sink>
Stop CodePageCodec::encodeSingleBytes(UnitSource& source, Sink& sink) const {
    for (;;) {
        const Stop stop = kind_ == Kind::SingleByteAscii
                              ? SingleByteCodec<Identity::Ascii>(table_).encode(source, sink)
                              : SingleByteCodec<Identity::None>(table_).encode(source, sink);
        if (stop != Stop::Invalid) return stop;
        const Stop systemStop = encodeCharacter(source, sink);
        if (systemStop != Stop::InputEnd) return systemStop;
    }
}

template <class Sink>
Stop CodePageCodec::encodeBatches(UnitSource& source, Sink& sink) const {
    while (!source.isEmpty()) {
        if (kind_ == Kind::MultiByteAscii) copyAscii(source, sink);
        const int limit = std::min(sink.room() / maxStatelessBytes, batchSize);
        const int count = wholeCharacters(source.next, std::min(source.remaining(), limit));
        char bytes[batchSize * maxStatelessBytes];
        const int length =
            count > 0 ? page_.encode(source.next, count, bytes, static_cast<int>(sizeof bytes))
                      : Platform::CodePage::tooSmall;
        if (length >= 0) {
            sink.put(bytes, length);
            source.next += count;
            continue;
        }
        if (source.isEmpty()) break;
        const Stop stop = encodeCharacter(source, sink);
        if (stop != Stop::InputEnd) return stop;
    }
    return Stop::InputEnd;
}

template <class Sink>
Stop CodePageCodec::encodeCharacter(UnitSource& source, Sink& sink) const {
    if (source.remaining() == 1 && isHighSurrogate(*source.next)) return Stop::Incomplete;
    const int count = characterLength(source.next, source.remaining());
    char bytes[maxCharacterBytes];
    const int length = page_.encode(source.next, count, bytes, maxCharacterBytes);
    if (length < 0) return Stop::Invalid;
    if (length > sink.room()) return Stop::OutputFull;
    sink.put(bytes, length);
    source.next += count;
    return Stop::InputEnd;
}

/// How many of `count` units come before the first character that the set does not have.
int CodePageCodec::encodablePrefix(const unsigned short* text, int count) const {
    int prefix = 0;
    while (prefix < count) {
        const int length = characterLength(text + prefix, count - prefix);
        if (page_.encode(text + prefix, length, nullptr, 0) < 0) break;
        prefix += length;
    }
    return prefix;
}

/// As much as possible in one piece, since every piece goes back to the initial state. No unit
/// takes less than a byte, so a longer piece than there is room for would be converted in vain.
template <class Sink>
Stop CodePageCodec::encodeWithStates(UnitSource& source, Sink& sink) const {
    const auto nextCount = [&] {
        return wholeCharacters(source.next, std::min(source.remaining(), std::max(sink.room(), 2)));
    };
    int count = nextCount();
    while (count > 0) {
        int length = page_.encode(source.next, count, sink.buffer(), sink.room());
        // Without a buffer the system measures, whatever the room.
        if (length > sink.room()) length = Platform::CodePage::tooSmall;
        const int firstLength = characterLength(source.next, count);
        if (length >= 0) {
            sink.advance(length);
            source.next += count;
            count = nextCount();
        } else if (count == firstLength) {
            return length == Platform::CodePage::tooSmall ? Stop::OutputFull : Stop::Invalid;
        } else if (length == Platform::CodePage::tooSmall) {
            count = std::max(wholeCharacters(source.next, count / 2), firstLength);
        } else {
            count = std::max(encodablePrefix(source.next, count), firstLength);
        }
    }
    return source.isEmpty() ? Stop::InputEnd : Stop::Incomplete;
}

template Stop CodePageCodec::decode(ByteSource&, UnitWriter&, bool) const;
template Stop CodePageCodec::decode(ByteSource&, UnitCounter&, bool) const;
template Stop CodePageCodec::encode(UnitSource&, ByteWriter&) const;
template Stop CodePageCodec::encode(UnitSource&, ByteCounter&) const;

} // namespace KrCore
