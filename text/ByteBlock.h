#pragma once

#include <cstddef>

namespace KrCore {

class Encoder;

/// A heap block for the bytes of encoded text, used again and again.
class ByteBlock {
public:
    ByteBlock() = default;
    ~ByteBlock();
    ByteBlock(const ByteBlock&) = delete;
    ByteBlock& operator=(const ByteBlock&) = delete;

    /// Room for `count` bytes and the zero bytes behind them; the contents are undefined then. A
    /// large block is given back when little is asked for. On OutOfMemory the block stays.
    void reserve(std::size_t count);

    /// Makes `count` bytes, which were reserved, the contents: four zero bytes are put behind them.
    void setLength(int count);

    char* bytes() { return bytes_; }
    const char* bytes() const { return bytes_; }
    int length() const { return length_; }

private:
    char* bytes_ = nullptr;
    std::size_t capacity_ = 0;
    int length_ = 0;
};

/// Encodes the units into `out` and returns the encoder's error code; after a failure `out` is
/// empty.
int encodeUnits(const unsigned short* units, int count, const Encoder& encoder, ByteBlock& out);

} // namespace KrCore
