#pragma once

#include "files/Codec.h"
#include "platform/FileStream.h"

#include <krcore/foundation/Heap.h>

#include <cstdint>

namespace KrCore {

/// Reads text from a stream: bytes by the block, decoded by the block, handed out by the piece.
/// What a block's end cuts off waits for the next block.
///
/// Codes are those of the encoder, and `IOError`; nothing is skipped then.
class TextReader : public Heap {
public:
    explicit TextReader(Platform::FileStream& stream);
    ~TextReader();

    /// Forgets what was read; the next byte is the one at `position`.
    void restart(std::int64_t position);
    /// Decodes what has not been handed out yet with another codec.
    void setCodec(const Codec& codec);

    /// The byte position of the next character.
    std::int64_t position() const;
    /// Whether no byte is left.
    bool isAtEnd();
    /// The first bytes of the file, before anything else is read; as many as there are up to
    /// `count`.
    int peek(const char*& bytes, int count);
    /// Bytes at the beginning of the file that are no text.
    void setMark(int byteCount) { markLength_ = byteCount; }
    int getMark() const { return markLength_; }
    /// Passes over bytes that `peek` gave.
    void skip(int byteCount) { usedBytes_ = byteCount; }

    /// Units up to `count`, one more rather than half a pair; 0 of them at the end.
    int read(std::int64_t count, String& text);
    /// A line without its end in place of the old text. `isFound` is false at the end of the file;
    /// the text is undefined then, and after a failure.
    int readLine(String& line, bool& isFound);

private:
    /// Where a call began, to return to when it fails.
    struct Place {
        std::int64_t blockPosition;
        int unit;
    };
    void returnTo(const Place& place);
    void passMark();
    template <class Reading>
    int orReturn(Reading reading);

    void forgetUnits();
    void grow();
    bool isAtStart() const { return blockPosition_ == 0 && usedBytes_ == 0; }
    int available() const { return unitCount_ - nextUnit_; }
    void discardUsedBytes();
    bool readBytes();
    int decodeBlock();
    int decodeInto(unsigned short* out, int& count);
    int fill();
    int readBlocks(std::int64_t count, String& text);
    int readToLineEnd(String& line, bool& isFound);
    void take(int count, String& text);
    void replace(String& text, int count);
    void skipLineFeed();

    static constexpr int usualBlockSize = 32768;
    /// No encoding needs so much at once.
    static constexpr int largestBlockSize = 1 << 20;

    Platform::FileStream& stream_;
    Codec codec_;
    char* bytes_ = nullptr;           ///< A block from the file.
    unsigned short* units_ = nullptr; ///< What its first `usedBytes_` decode to.
    std::int64_t blockPosition_ = 0;  ///< Where the block lies in the file.
    int markLength_ = 0;
    int blockSize_ = 0;
    int byteCount_ = 0;
    int usedBytes_ = 0;
    int unitCount_ = 0;
    int nextUnit_ = 0;
    bool isLastBlock_ = false;
    /// A unit of the block of which somebody asked where it begins.
    struct KnownPlace {
        int unit = 0;
        int byte = 0;
    };
    mutable KnownPlace known_;
};

} // namespace KrCore
