#include "files/Codec.h"

#include "text/UnitBlock.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>

#include <algorithm>
#include <bit>
#include <string_view>

namespace KrCore {

namespace {

constexpr bool isNativelyBig = std::endian::native == std::endian::big;

/// The encoder of the same width with a fixed byte order; the encoder itself when it has one.
const Encoder* orderedEncoder(const Encoder* encoder, const char* markName) {
    const std::string_view mark = markName ? markName : "";
    if (encoder == Encoder::get("UCS2")) {
        const bool isBig = mark.starts_with("UCS-2") ? mark == "UCS-2BE" : isNativelyBig;
        return Encoder::get(isBig ? "UCS2BE" : "UCS2LE");
    }
    if (encoder == Encoder::get("UCS4")) {
        const bool isBig = mark.starts_with("UCS-4") ? mark == "UCS-4BE" : isNativelyBig;
        return Encoder::get(isBig ? "UCS4BE" : "UCS4LE");
    }
    return encoder;
}

int markLengthOf(const Encoder* encoder) {
    for (const char* name : {"UCS2LE", "UCS2BE"}) {
        if (encoder == Encoder::get(name)) return 2;
    }
    for (const char* name : {"UCS4LE", "UCS4BE"}) {
        if (encoder == Encoder::get(name)) return 4;
    }
    return 0;
}

/// Without them every text is UTF-8.
bool hasSurrogates(const unsigned short* at, const unsigned short* end) {
    const UnitBlock mask = UnitBlock::of(0xF800);
    const UnitBlock surrogate = UnitBlock::of(0xD800);
    for (; end - at >= UnitBlock::size; at += UnitBlock::size) {
        if (((UnitBlock::load(at) & mask) == surrogate).mask() != 0) return true;
    }
    return std::any_of(at, end, [](unsigned short unit) { return (unit & 0xF800) == 0xD800; });
}

} // namespace

Codec::Codec(const Encoder* encoder, const char* markName)
    : encoder_(orderedEncoder(encoder ? encoder : &Encoder::getDefault(), markName)),
      markLength_(markLengthOf(encoder_)) {}

int Codec::decode(const char* in, int& inCount, unsigned short* out, int& outCount, bool isAtStart,
                  bool flush) const {
    int marks = 0;
    while (markLength_ > 0 && !isAtStart && marks < outCount) {
        const char* const next = in + marks * markLength_;
        int used = markLength_;
        unsigned short unit = 0;
        int units = 1;
        if (inCount - marks * markLength_ < markLength_) break;
        encoder_->toUnicode(next, used, &unit, units, false);
        if (used != markLength_ || units != 0) break;
        out[marks++] = 0xFEFF;
    }
    int restIn = inCount - marks * markLength_;
    int restOut = outCount - marks;
    int code = ErrorCode::Ok;
    if (marks > 0 && restOut == 0) {
        restIn = 0; // The encoder would drop one mark more.
    } else {
        code = encoder_->toUnicode(in + marks * markLength_, restIn, out + marks, restOut, flush);
    }
    inCount = marks * markLength_ + restIn;
    outCount = marks + restOut;
    return code;
}

int Codec::encode(const unsigned short* in, int& inCount, char* out, int& outCount) const {
    return encoder_->toMBCS(in, inCount, out, outCount, true);
}

int Codec::check(const unsigned short* text, int count) const {
    if (encoder_ == &Encoder::getUtf8() && !hasSurrogates(text, text + count)) return ErrorCode::Ok;
    int consumed = 0;
    encoder_->getMBCSLength(text, count, consumed);
    if (consumed == count) return ErrorCode::Ok;
    // The encoder itself says what is wrong with the next character.
    char bytes[16];
    int rest = count - consumed;
    int written = sizeof bytes;
    const int code = encoder_->toMBCS(text + consumed, rest, bytes, written, true);
    return code != ErrorCode::Ok ? code : ErrorCode::CharacterConversion;
}

String canonicalName(const Encoder& encoder) {
    String names;
    encoder.getName(names);
    return names.split(',');
}

} // namespace KrCore
