// URI encoding: percent signs and UTF-8.

#include <krcore/text/String.h>

#include "text/ByteBlock.h"
#include "text/Decoding.h"
#include "text/HexDigits.h"
#include "text/StringBuffer.h"
#include "text/TextArgument.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>

#include <algorithm>
#include <bitset>

namespace KrCore {

namespace {

/// The bytes that need no escape.
using KeptBytes = std::bitset<256>;

KeptBytes keptBytes(const TextArgument& keep) {
    KeptBytes kept;
    const auto keepRange = [&kept](char first, char last) {
        for (char byte = first; byte <= last; ++byte) {
            kept.set(static_cast<std::size_t>(byte));
        }
    };
    keepRange('0', '9');
    keepRange('A', 'Z');
    keepRange('a', 'z');
    for (int i = 0; i < keep.length(); ++i) {
        const unsigned short unit = keep.units()[i];
        if (unit >= 1 && unit <= 127) kept.set(unit);
    }
    return kept;
}

bool encodeUtf8(const String& text, ByteBlock& out) {
    const Encoder* utf8 = Encoder::get("UTF8");
    return utf8 && encodeUnits(text.wstr(), text.length(), *utf8, out) == ErrorCode::Ok;
}

bool encodeKeeping(String& text, const TextArgument& keep) {
    ByteBlock utf8;
    if (!encodeUtf8(text, utf8)) return false;
    const KeptBytes kept = keptBytes(keep);
    const auto isKept = [&kept](char byte) { return kept[static_cast<unsigned char>(byte)]; };
    const char* const bytes = utf8.bytes();
    const char* const end = bytes + utf8.length();
    const std::int64_t escapes = utf8.length() - std::count_if(bytes, end, isKept);

    String encoded;
    encoded.init(StringBuffer::checkedLength(utf8.length() + 2 * escapes));
    unsigned short* out = StringBuffer::of(encoded)->units();
    for (const char* at = bytes; at != end; ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        if (kept[byte]) {
            *out++ = byte;
        } else {
            *out++ = '%';
            out = putHex(out, byte, 2);
        }
    }
    StringBuffer::replaceContents(text, std::move(encoded));
    return true;
}

/// Replaces each escape by its byte, in place, and returns the number of bytes left.
int unescapeBytes(char* bytes, int count) {
    int written = 0;
    for (int i = 0; i < count; ++i) {
        char byte = bytes[i];
        if (byte == '%' && count - i > 2) {
            const int high = hexDigit(static_cast<unsigned char>(bytes[i + 1]));
            const int low = hexDigit(static_cast<unsigned char>(bytes[i + 2]));
            if (high >= 0 && low >= 0) {
                byte = static_cast<char>(high * 16 + low);
                i += 2;
            }
        }
        bytes[written++] = byte;
    }
    return written;
}

} // namespace

bool String::encodeURI(const char* keep) { return encodeKeeping(*this, TextArgument(keep)); }

bool String::encodeURI(const unsigned short* keep) {
    return encodeKeeping(*this, TextArgument(keep));
}

bool String::decodeURI() {
    // Escapes are ASCII and look the same in UTF-8, so the whole text becomes bytes first.
    ByteBlock utf8;
    if (!encodeUtf8(*this, utf8)) return false;
    const int byteCount = unescapeBytes(utf8.bytes(), utf8.length());
    return decode(utf8.bytes(), byteCount, Encoder::get("UTF8")) == ErrorCode::Ok;
}

} // namespace KrCore
