#include "files/TextWriter.h"

#include "files/SystemText.h"

#include <krcore/files/FileUtils.h>
#include <krcore/foundation/ErrorCode.h>

#include <algorithm>
#include <cstring>

namespace KrCore {

namespace {

bool isHighSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xD800; }

struct LineEnd {
    unsigned short units[2];
    int length;
};

LineEnd lineEndOf(CRLFEncoding kind) {
    switch (kind == CRLFEncoding::Default ? FileUtils::getSystemLF() : kind) {
    case CRLFEncoding::CR:
        return {{'\r', 0}, 1};
    case CRLFEncoding::LF:
        return {{'\n', 0}, 1};
    case CRLFEncoding::Default:
    case CRLFEncoding::CRLF:
        break;
    }
    return {{'\r', '\n'}, 2};
}

bool isLineEnd(unsigned short unit) { return unit == '\n' || unit == '\r'; }

} // namespace

TextWriter::TextWriter(Platform::FileStream& stream) : stream_(stream) {}

TextWriter::~TextWriter() {
    Heap::operator delete(pending_);
    Heap::operator delete(units_);
}

void TextWriter::restart(std::int64_t position) {
    position_ = position;
    endsInReturn_ = false;
    stream_.seek(position);
}

int TextWriter::flush() {
    std::size_t written = 0;
    const int code =
        codeOf(stream_.write(pending_, static_cast<std::size_t>(pendingCount_), written));
    position_ += static_cast<std::int64_t>(written);
    pendingCount_ -= static_cast<int>(written);
    if (written > 0) std::memmove(pending_, pending_ + written, std::size_t(pendingCount_));
    return code;
}

int TextWriter::write(const Codec& codec, const String& text, CRLFEncoding kind,
                      bool appendLineEnd) {
    reserveBlocks();
    // What was there before goes out before a text that may need the room; if that fails, nothing
    // has happened to the text yet.
    if (text.length() > (blockSize - pendingCount_ - roomForCharacter) / roomForCharacter) {
        const int code = flush();
        if (code != ErrorCode::Ok) return code;
    }
    const std::int64_t start = position();
    const std::int64_t size = pendingCount_ == 0 ? stream_.size() : -1;
    const bool endedInReturn = endsInReturn_;
    int code = writeText(codec, text, kind);
    if (code == ErrorCode::Ok && appendLineEnd) code = writeLineEnd(codec, kind);
    if (code != ErrorCode::Ok) {
        takeBack(start, size);
        endsInReturn_ = endedInReturn;
    }
    return code;
}

void TextWriter::reserveBlocks() {
    if (!pending_) pending_ = static_cast<char*>(Heap::operator new(blockSize));
    if (!units_) {
        units_ = static_cast<unsigned short*>(
            Heap::operator new(unitBlockSize * sizeof(unsigned short)));
    }
}

/// Makes a writing that failed undone, so that it can be tried again: what went out behind the end
/// of the file is cut off.
void TextWriter::takeBack(std::int64_t start, std::int64_t size) {
    if (position_ <= start) {
        pendingCount_ = static_cast<int>(start - position_);
        return;
    }
    pendingCount_ = 0;
    if (size == start) stream_.setSize(start);
    position_ = start;
    stream_.seek(start);
}

int TextWriter::writeText(const Codec& codec, const String& text, CRLFEncoding kind) {
    const unsigned short* units = text.wstr();
    int count = text.length();
    if (count == 0) return ErrorCode::Ok;
    // The second half of a line end that the last text began.
    const int skipped = endsInReturn_ && *units == '\n' ? 1 : 0;
    endsInReturn_ = units[count - 1] == '\r';
    units += skipped;
    count -= skipped;
    while (count > 0) {
        int written = 0;
        const int taken = takeBlock(units, count, kind, written);
        const int code = encodeBlock(codec, units_, written);
        if (code != ErrorCode::Ok) return code;
        units += taken;
        count -= taken;
    }
    return ErrorCode::Ok;
}

int TextWriter::writeLineEnd(const Codec& codec, CRLFEncoding kind) {
    endsInReturn_ = false;
    const LineEnd lineEnd = lineEndOf(kind);
    return encodeBlock(codec, lineEnd.units, lineEnd.length);
}

/// Fills the block of units with text whose line ends are final and returns how many units of the
/// text that took. A pair and a line end stay whole.
int TextWriter::takeBlock(const unsigned short* units, int count, CRLFEncoding kind, int& written) {
    const LineEnd lineEnd = lineEndOf(kind);
    const unsigned short* at = units;
    const unsigned short* const end = units + count;
    unsigned short* out = units_;
    const unsigned short* const outEnd = units_ + unitBlockSize - 2;
    while (at != end && out < outEnd) {
        const auto room = std::min(end - at, outEnd - out);
        const unsigned short* const stop = std::find_if(at, at + room, isLineEnd);
        out = std::copy(at, stop, out);
        at = stop;
        if (at == end || !isLineEnd(*at)) continue;
        at += *at == '\r' && at + 1 != end && at[1] == '\n' ? 2 : 1;
        out = std::copy_n(lineEnd.units, lineEnd.length, out);
    }
    if (at != end && isHighSurrogate(out[-1])) *out++ = *at++;
    written = static_cast<int>(out - units_);
    return static_cast<int>(at - units);
}

int TextWriter::encodeBlock(const Codec& codec, const unsigned short* units, int count) {
    while (count > 0) {
        int used = count;
        int room = blockSize - pendingCount_;
        if (room >= roomForCharacter) {
            const int code = codec.encode(units, used, pending_ + pendingCount_, room);
            pendingCount_ += room;
            units += used;
            count -= used;
            if (code != ErrorCode::Ok) return code;
            if (count == 0) break;
            // An encoder that takes nothing although there is room never will.
            if (used == 0 && pendingCount_ == 0) return ErrorCode::CharacterConversion;
        }
        const int code = flush();
        if (code != ErrorCode::Ok) return code;
    }
    return ErrorCode::Ok;
}

} // namespace KrCore
