#include "files/TextWriter.h"

#include "files/LineEnds.h"
#include "files/SystemText.h"

#include <krcore/files/FileUtils.h>
#include <krcore/foundation/ErrorCode.h>

#include <algorithm>
#include <cstring>

namespace KrCore {

TextWriter::TextWriter(Platform::FileStream& stream) : stream_(stream) {}

TextWriter::~TextWriter() { Heap::operator delete(pending_); }

TextWriter::LineEnd TextWriter::lineEndOf(CRLFEncoding kind) {
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

void TextWriter::restart(std::int64_t position) {
    if (position != this->position()) endsInReturn_ = false;
    position_ = position;
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
    if (!pending_) pending_ = static_cast<char*>(Heap::operator new(blockSize));
    std::int64_t size = -1;
    if (text.length() > (blockSize - pendingCount_) / roomForCharacter - 1) {
        // A long text: what waits goes out first, and what cannot be encoded is refused before the
        // first block goes.
        int code = flush();
        if (code == ErrorCode::Ok) code = codec.check(text.wstr(), text.length());
        if (code != ErrorCode::Ok) return code;
        size = stream_.size();
    }
    const std::int64_t start = position();
    const bool endedInReturn = endsInReturn_;
    const LineEnd lineEnd = lineEndOf(kind);
    int code = writeText(codec, text, lineEnd);
    if (code == ErrorCode::Ok && appendLineEnd) code = writeLineEnd(codec, lineEnd);
    if (code != ErrorCode::Ok) {
        takeBack(start, size);
        endsInReturn_ = endedInReturn;
    }
    return code;
}

/// Makes a writing that failed undone, so that it can be tried again: what went out behind the end
/// of the file is cut off.
void TextWriter::takeBack(std::int64_t start, std::int64_t size) {
    if (position_ <= start) {
        pendingCount_ = static_cast<int>(start - position_);
        return;
    }
    pendingCount_ = 0;
    if (size >= start && stream_.size() > size) stream_.setSize(size);
    position_ = start;
    stream_.seek(start);
}

int TextWriter::writeText(const Codec& codec, const String& text, const LineEnd& lineEnd) {
    const unsigned short* at = text.begin();
    const unsigned short* const end = text.end();
    // The second half of a line end that the last text began.
    if (at != end && endsInReturn_ && *at == '\n') ++at;
    if (!text.isEmpty()) endsInReturn_ = false;
    while (at != end) {
        const unsigned short* const stop = findLineEnd(at, end);
        int code = encode(codec, at, static_cast<int>(stop - at));
        if (code != ErrorCode::Ok || stop == end) return code;
        code = writeLineEnd(codec, lineEnd);
        if (code != ErrorCode::Ok) return code;
        const bool isReturn = *stop == '\r';
        at = stop + 1;
        endsInReturn_ = isReturn && at == end;
        if (isReturn && at != end && *at == '\n') ++at;
    }
    return ErrorCode::Ok;
}

int TextWriter::writeLineEnd(const Codec& codec, const LineEnd& lineEnd) {
    endsInReturn_ = false;
    return encode(codec, lineEnd.units, lineEnd.length);
}

int TextWriter::encode(const Codec& codec, const unsigned short* units, int count) {
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
