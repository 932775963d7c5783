#include "text/ByteBlock.h"

#include "text/Units.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/Heap.h>
#include <krcore/text/Encoder.h>

#include <algorithm>
#include <climits>

namespace KrCore {

namespace {

constexpr std::size_t terminatorSize = 4;
constexpr std::size_t smallestBlock = 256;
/// A block above this size is not kept for text that fills less than a quarter of it.
constexpr std::size_t keptBlock = 65536;

/// Units measured in one step; so that the byte count of a step stays within an `int`.
constexpr int measuredStep = 1 << 26;

/// Room for a character that has no encoding, so that the encoder meets it and says what is wrong.
constexpr int roomForFailure = 16;

/// The bytes needed for the units up to the first that cannot be encoded.
std::int64_t roomFor(const unsigned short* units, int count, const Encoder& encoder) {
    std::int64_t byteCount = 0;
    for (int from = 0; from < count;) {
        int step = std::min(count - from, measuredStep);
        if (from + step < count && isHighSurrogate(units[from + step - 1])) --step;
        int consumed = 0;
        byteCount += encoder.getMBCSLength(units + from, step, consumed);
        if (consumed != step) return byteCount + roomForFailure;
        from += step;
    }
    return byteCount;
}

} // namespace

ByteBlock::~ByteBlock() { Heap::operator delete(bytes_); }

void ByteBlock::reserve(std::size_t count) {
    const std::size_t needed = std::max(count + terminatorSize, smallestBlock);
    const bool isTooLarge = capacity_ > keptBlock && needed < capacity_ / 4;
    if (needed <= capacity_ && !isTooLarge) return;
    char* fresh = static_cast<char*>(Heap::operator new(needed));
    Heap::operator delete(bytes_);
    bytes_ = fresh;
    capacity_ = needed;
    length_ = 0;
}

void ByteBlock::setLength(int count) {
    std::fill_n(bytes_ + count, terminatorSize, '\0');
    length_ = count;
}

int encodeUnits(const unsigned short* units, int count, const Encoder& encoder, ByteBlock& out) {
    const std::int64_t room = roomFor(units, count, encoder);
    if (room > INT_MAX) throw OutOfMemory();
    out.reserve(static_cast<std::size_t>(room));
    int consumed = count;
    int written = static_cast<int>(room);
    const int code = encoder.toMBCS(units, consumed, out.bytes(), written, true);
    const bool isWhole = code == ErrorCode::Ok && consumed == count;
    out.setLength(isWhole ? written : 0);
    return code == ErrorCode::Ok && !isWhole ? int(ErrorCode::CharacterConversion) : code;
}

} // namespace KrCore
