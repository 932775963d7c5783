#include "text/encoders/UniversalEncoder.h"

#include "text/encoders/CodecEncoder.h"

namespace KrCore {

using Conversions = CodecConversions<CodePageCodec>;

UniversalEncoder::UniversalEncoder(int page, int mapping, const char* aliases)
    : Encoder(mapping), page_(page), aliases_(aliases), codec_(page) {}

void UniversalEncoder::getName(String& name) const {
    name.print("%ls,CP%ld,WINDOWS-%ld", String(aliases_).wstr(), page_, page_);
    if (*aliases_ == '\0') name.erase(0, 1);
}

int UniversalEncoder::getUnicodeLength(const char* bytes, int count, int& consumed) const {
    return Conversions::unicodeLength(codec_, bytes, count, consumed);
}

int UniversalEncoder::getMBCSLength(const unsigned short* text, int count, int& consumed) const {
    return Conversions::mbcsLength(codec_, text, count, consumed);
}

int UniversalEncoder::toUnicode(const char* in, int& inCount, unsigned short* out, int& outCount,
                                bool flush) const {
    return Conversions::toUnicode(codec_, in, inCount, out, outCount, flush);
}

int UniversalEncoder::toMBCS(const unsigned short* in, int& inCount, char* out, int& outCount,
                             bool flush) const {
    return Conversions::toMBCS(codec_, in, inCount, out, outCount, flush);
}

} // namespace KrCore
