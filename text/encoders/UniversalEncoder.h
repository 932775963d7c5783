#pragma once

#include "text/encoders/CodePageCodec.h"

#include <krcore/text/Encoder.h>
#include <krcore/text/String.h>

namespace KrCore {

/// An encoder for a code page of the operating system.
class UniversalEncoder final : public Encoder {
public:
    /// The system knows the page. `aliases` may be empty.
    UniversalEncoder(int page, int mapping, const char* aliases);

    void getName(String& name) const override;
    int getUnicodeLength(const char* bytes, int count, int& consumed) const override;
    int getMBCSLength(const unsigned short* text, int count, int& consumed) const override;
    int toUnicode(const char* in, int& inCount, unsigned short* out, int& outCount,
                  bool flush) const override;
    int toMBCS(const unsigned short* in, int& inCount, char* out, int& outCount,
               bool flush) const override;

private:
    const int page_;
    const char* const aliases_;
    CodePageCodec codec_;
};

} // namespace KrCore
