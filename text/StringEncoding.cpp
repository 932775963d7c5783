// Conversion to and from other character sets, and the buffer that lends the results.

#include <krcore/text/String.h>

#include "foundation/Context.h"
#include "foundation/ModuleHooks.h"
#include "text/ByteBlock.h"
#include "text/Decoding.h"
#include "text/StringBuffer.h"
#include "text/Units.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>
#include <krcore/text/Localizer.h>

#include <climits>
#include <utility>

namespace KrCore {

/// The calling thread's last result of `encode`.
struct EncodeScratch : public Heap {
    ByteBlock block;
};

void endStringsOf(Context& context) { delete std::exchange(context.encodeScratch, nullptr); }

namespace {

const Encoder& encoderOrDefault(const Encoder* encoder) {
    return encoder ? *encoder : Encoder::getDefault();
}

ByteBlock& scratchBlock() {
    Context* context = currentContext();
    if (!context) throw OutOfMemory();
    if (!context->encodeScratch) context->encodeScratch = new EncodeScratch;
    return context->encodeScratch->block;
}

int countCodePoints(const String& text) {
    int count = 0;
    for (int i = 0; i < text.length(); ++count) {
        i += isPair(text.wstr() + i, text.end()) ? 2 : 1;
    }
    return count;
}

constexpr int roomForFailure = 4;

} // namespace

int decodeBytes(const char* bytes, int count, const Encoder& encoder, bool flush, String& result) {
    int consumed = 0;
    std::int64_t room = encoder.getUnicodeLength(bytes, count, consumed);
    // With room to go on, the encoder meets the sequence that it cannot decode and says what is
    // wrong.
    if (consumed != count) room += roomForFailure;
    String decoded;
    decoded.init(StringBuffer::checkedLength(room));
    consumed = count;
    int written = decoded.length();
    const int code =
        encoder.toUnicode(bytes, consumed, StringBuffer::of(decoded)->units(), written, flush);
    if (code != ErrorCode::Ok) return code;
    if (flush && consumed != count) return ErrorCode::CharacterConversion;
    if (written != decoded.length()) decoded.adjust(written);
    StringBuffer::replaceContents(result, std::move(decoded));
    return ErrorCode::Ok;
}

const char* String::encode(const Encoder* encoder) const {
    const char* bytes = nullptr;
    int byteCount = 0;
    encode(bytes, byteCount, encoder);
    return bytes;
}

int String::encode(const char*& out, int& length, const Encoder* encoder) const {
    ByteBlock& block = scratchBlock();
    const int code = encodeUnits(wstr(), this->length(), encoderOrDefault(encoder), block);
    out = block.bytes();
    length = block.length();
    return code;
}

const unsigned int* String::encodeUtf32() const {
    constexpr std::int64_t unitSize = sizeof(unsigned int);
    const std::int64_t byteCount = countCodePoints(*this) * unitSize;
    if (byteCount > INT_MAX) throw OutOfMemory();
    ByteBlock& block = scratchBlock();
    block.reserve(static_cast<std::size_t>(byteCount));
    char* out = block.bytes();
    for (const unsigned short* at = begin(); at != end(); out += unitSize) {
        const bool pair = isPair(at, end());
        const unsigned int codePoint = pair ? codePointOf(at) : *at;
        std::memcpy(out, &codePoint, unitSize);
        at += pair ? 2 : 1;
    }
    block.setLength(static_cast<int>(byteCount));
    return reinterpret_cast<const unsigned int*>(block.bytes());
}

int String::getEncodedLength() {
    const Context* context = currentContext();
    return context && context->encodeScratch ? context->encodeScratch->block.length() : 0;
}

int String::decode(const char* text, int length, const Encoder* encoder) {
    if (!text) length = 0;
    const int count = length < 0 ? countBytes(text, INT_MAX) : length;
    if (count == 0) {
        erase();
        return ErrorCode::Ok;
    }
    return decodeBytes(text, count, encoderOrDefault(encoder), true, *this);
}

int String::decode(const unsigned int* text) {
    StringBuffer::replaceContents(*this, String(text));
    return ErrorCode::Ok;
}

void String::localize(const Array* args) {
    String localized = Localizer::localize(*this, args);
    // It may be a text that the localizer keeps, which must not take on the mark of this buffer.
    if (StringBuffer::isUnshareable(buffer_)) localized.adjust(localized.length());
    StringBuffer::replaceContents(*this, std::move(localized));
}

} // namespace KrCore
