#include "files/TextReader.h"

#include "files/LineEnds.h"

#include <krcore/foundation/ErrorCode.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace KrCore {

namespace {

bool isHighSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xDC00; }

} // namespace

TextReader::TextReader(Platform::FileStream& stream) : stream_(stream) {}

TextReader::~TextReader() {
    Heap::operator delete(bytes_);
    Heap::operator delete(units_);
}

void TextReader::forgetUnits() {
    usedBytes_ = unitCount_ = nextUnit_ = 0;
    known_ = {};
}

void TextReader::restart(std::int64_t position) {
    blockPosition_ = position;
    byteCount_ = 0;
    forgetUnits();
    isLastBlock_ = false;
    if (stream_.isOpen()) stream_.seek(position);
}

void TextReader::setCodec(const Codec& codec) {
    if (unitCount_ > 0) restart(position());
    codec_ = codec;
}

std::int64_t TextReader::position() const {
    if (available() == 0) return blockPosition_ + usedBytes_;
    // Nobody kept where the units came from; those handed out since the last question are decoded
    // once more.
    if (nextUnit_ < known_.unit) known_ = {};
    int used = usedBytes_ - known_.byte;
    int count = nextUnit_ - known_.unit;
    if (count > 0) {
        const bool isAtStart = blockPosition_ + known_.byte == 0;
        codec_.decode(bytes_ + known_.byte, used, units_ + known_.unit, count, isAtStart, false);
        known_.byte += used;
        known_.unit += count;
    }
    return blockPosition_ + known_.byte;
}

bool TextReader::isAtEnd() {
    const int mark = isAtStart() ? markLength_ : 0;
    if (available() > 0 || byteCount_ - usedBytes_ > mark) return false;
    return !readBytes() || byteCount_ <= mark;
}

int TextReader::peek(const char*& bytes, int count) {
    while (byteCount_ < count && !isLastBlock_ && readBytes()) {
    }
    bytes = bytes_;
    return std::min(byteCount_, count);
}

/// The block begins with the first byte that is not decoded yet.
void TextReader::discardUsedBytes() {
    const int rest = byteCount_ - usedBytes_;
    if (rest > 0) std::memmove(bytes_, bytes_ + usedBytes_, static_cast<std::size_t>(rest));
    blockPosition_ += usedBytes_;
    byteCount_ -= usedBytes_;
    forgetUnits();
}

/// Room for one block, or for a longer one when an encoding with states needs more at once.
void TextReader::grow() {
    const int size = blockSize_ > 0 ? blockSize_ * 2 : usualBlockSize;
    auto* bytes = static_cast<char*>(Heap::operator new(static_cast<std::size_t>(size)));
    if (byteCount_ > 0) std::memcpy(bytes, bytes_, static_cast<std::size_t>(byteCount_));
    Heap::operator delete(std::exchange(bytes_, bytes));
    Heap::operator delete(std::exchange(units_, nullptr));
    blockSize_ = size;
}

/// Fills the block up; false when the system fails. All its units were handed out.
bool TextReader::readBytes() {
    discardUsedBytes();
    if (byteCount_ == blockSize_) grow();
    const std::int64_t count =
        stream_.read(bytes_ + byteCount_, static_cast<std::size_t>(blockSize_ - byteCount_));
    if (count < 0) return false;
    isLastBlock_ = count == 0;
    byteCount_ += static_cast<int>(count);
    return true;
}

/// Decodes what lies behind the used bytes. Code and `count` as for an encoder; a block that holds
/// nothing that could be decoded now or later is an error.
int TextReader::decodeInto(unsigned short* out, int& count) {
    int used = byteCount_ - usedBytes_;
    const bool isAtStart = blockPosition_ + usedBytes_ == 0;
    int code = codec_.decode(bytes_ + usedBytes_, used, out, count, isAtStart, isLastBlock_);
    usedBytes_ += used;
    if (count > 0 || used > 0) return ErrorCode::Ok;
    const bool isStuck = byteCount_ - usedBytes_ >= largestBlockSize || isLastBlock_;
    if (code == ErrorCode::Ok && isStuck && usedBytes_ < byteCount_)
        code = isLastBlock_ ? ErrorCode::PartialCharacter : ErrorCode::CharacterConversion;
    return code;
}

int TextReader::decodeBlock() {
    if (!units_) {
        const auto size = static_cast<std::size_t>(blockSize_) * sizeof(unsigned short);
        units_ = static_cast<unsigned short*>(Heap::operator new(size));
    }
    forgetUnits();
    unitCount_ = blockSize_;
    const int code = decodeInto(units_, unitCount_);
    const bool mayCutPair = unitCount_ > 0 && isHighSurrogate(units_[unitCount_ - 1]) &&
                            !isLastBlock_ && byteCount_ < largestBlockSize;
    if (mayCutPair) {
        // The other half, if there is one, comes with the next block.
        --unitCount_;
        usedBytes_ = byteCount_;
        codec_.decode(bytes_, usedBytes_, units_, unitCount_, blockPosition_ == 0, false);
    }
    return code;
}

/// Makes units available, unless the file ends. A block that is decoded begins with an unused byte.
int TextReader::fill() {
    while (available() == 0) {
        if (usedBytes_ > 0 || byteCount_ == 0 || !isLastBlock_) {
            if (!readBytes()) return ErrorCode::IOError;
        }
        const int code = decodeBlock();
        if (code != ErrorCode::Ok) return code;
        if (available() == 0 && isLastBlock_ && usedBytes_ == byteCount_) break;
    }
    return ErrorCode::Ok;
}

void TextReader::take(int count, String& text) {
    text.append(units_ + nextUnit_, count);
    nextUnit_ += count;
}

/// The same for the beginning of a line: lines that follow each other share one buffer.
void TextReader::replace(String& text, int count) {
    text.adjust(count);
    if (count > 0) std::memcpy(text.writable(), units_ + nextUnit_, std::size_t(count) * 2);
    nextUnit_ += count;
}

/// The block that the call began in may be gone; it is read again then.
void TextReader::returnTo(const Place& place) {
    if (place.unit == 0) return restart(place.blockPosition);
    if (blockPosition_ != place.blockPosition) {
        restart(place.blockPosition);
        if (fill() != ErrorCode::Ok) return restart(place.blockPosition);
    }
    nextUnit_ = std::min(place.unit, unitCount_);
}

void TextReader::passMark() {
    const char* bytes = nullptr;
    if (markLength_ > 0) skip(peek(bytes, markLength_));
}

/// What a reading gives; the position is where it was when that is no success.
template <class Reading>
int TextReader::orReturn(Reading reading) {
    if (available() == 0) discardUsedBytes();
    const Place start{blockPosition_, nextUnit_};
    try {
        if (isAtStart()) passMark();
        const int code = reading();
        if (code != ErrorCode::Ok) returnTo(start);
        return code;
    } catch (...) {
        returnTo(start);
        throw;
    }
}

int TextReader::read(std::int64_t count, String& text) {
    return orReturn([&] { return readBlocks(count, text); });
}

int TextReader::readBlocks(std::int64_t count, String& text) {
    while (count > 0) {
        const int code = fill();
        if (code != ErrorCode::Ok) return code;
        if (available() == 0) break;
        int step = static_cast<int>(std::min<std::int64_t>(count, available()));
        const bool cutsPair = step < available() && isHighSurrogate(units_[nextUnit_ + step - 1]) &&
                              isLowSurrogate(units_[nextUnit_ + step]);
        if (cutsPair) ++step;
        take(step, text);
        count -= step;
    }
    return ErrorCode::Ok;
}

int TextReader::readLine(String& line, bool& isFound) {
    return orReturn([&] { return readToLineEnd(line, isFound); });
}

int TextReader::readToLineEnd(String& line, bool& isFound) {
    isFound = false;
    for (;;) {
        const int code = fill();
        if (code != ErrorCode::Ok) return code;
        if (available() == 0) return ErrorCode::Ok;
        const unsigned short* const start = units_ + nextUnit_;
        const auto length = static_cast<int>(findLineEnd(start, units_ + unitCount_) - start);
        const bool isWhole = length < available();
        if (isFound) {
            take(length, line);
        } else {
            replace(line, length);
        }
        isFound = true;
        if (!isWhole) continue;
        if (units_[nextUnit_++] == '\r') skipLineFeed();
        return ErrorCode::Ok;
    }
}

/// Behind a CR, which may end a block. What is wrong with the next one is for the next call.
void TextReader::skipLineFeed() {
    if (fill() != ErrorCode::Ok) return;
    if (available() > 0 && units_[nextUnit_] == '\n') ++nextUnit_;
}

} // namespace KrCore
