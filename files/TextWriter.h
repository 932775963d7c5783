#pragma once

#include "files/Codec.h"
#include "platform/FileStream.h"

#include <krcore/foundation/Heap.h>

#include <cstddef>
#include <cstdint>

namespace KrCore {

/// Writes text to a stream, encoded and with line ends of one kind, by the block.
class TextWriter : public Heap {
public:
    explicit TextWriter(Platform::FileStream& stream);
    ~TextWriter();

    /// Nothing may be pending. The next byte goes to `position`.
    void restart(std::int64_t position);
    /// What comes next does not belong to what was written last.
    void breakOff() { endsInReturn_ = false; }
    /// Where the next byte goes.
    std::int64_t position() const { return position_ + pendingCount_; }
    bool hasPending() const { return pendingCount_ > 0; }
    /// Bytes that the stream refused stay pending.
    int flush();
    /// Gives up what is pending.
    void drop() { pendingCount_ = 0; }

    /// Writes a text, and with `appendLineEnd` a line end. A CR and a LF that come with two calls
    /// are one line end. A code of the encoder when the text cannot be encoded, `IOError` when the
    /// stream takes no more; nothing of it is written then, unless it overwrote what was there.
    int write(const Codec& codec, const String& text, CRLFEncoding kind, bool appendLineEnd);

private:
    struct LineEnd {
        unsigned short units[2];
        int length;
    };
    static LineEnd lineEndOf(CRLFEncoding kind);
    void takeBack(std::int64_t start, std::int64_t size);
    int writeText(const Codec& codec, const String& text, const LineEnd& lineEnd);
    int writeLineEnd(const Codec& codec, const LineEnd& lineEnd);
    int encode(const Codec& codec, const unsigned short* units, int count);

    static constexpr int blockSize = 32768;
    /// No character takes more.
    static constexpr int roomForCharacter = 16;

    Platform::FileStream& stream_;
    char* pending_ = nullptr;   ///< A block of bytes on their way.
    std::int64_t position_ = 0; ///< Where the pending bytes go.
    int pendingCount_ = 0;
    bool endsInReturn_ = false; ///< The last text ended in a CR, which was written as a line end.
};

} // namespace KrCore
