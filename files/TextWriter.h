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
    /// Where the next byte goes.
    std::int64_t position() const { return position_ + pendingCount_; }
    bool hasPending() const { return pendingCount_ > 0; }
    /// Bytes that the stream refused stay pending.
    int flush();
    /// Gives up what is pending.
    void drop() { pendingCount_ = 0; }

    /// A code of the encoder when the text cannot be encoded; nothing of it is written then.
    int write(const Codec& codec, const unsigned short* units, int count, CRLFEncoding lineEnd);

private:
    int takeBlock(const unsigned short* units, int count, CRLFEncoding kind, int& written);
    int encodeBlock(const Codec& codec, const unsigned short* units, int count);

    static constexpr int blockSize = 32768;
    static constexpr int unitBlockSize = 8192;
    /// No character takes more.
    static constexpr int roomForCharacter = 16;

    Platform::FileStream& stream_;
    char* pending_ = nullptr;         ///< A block of bytes on their way.
    unsigned short* units_ = nullptr; ///< A block of text with its final line ends.
    std::int64_t position_ = 0;       ///< Where the pending bytes go.
    int pendingCount_ = 0;
};

} // namespace KrCore
