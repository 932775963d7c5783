#include "TextBridge.h"

#include <new>

namespace krhost::TextBridge {

namespace {

constexpr char32_t replacement = 0xFFFD;

/// Reads code points, and surrogates as what they are.
class Reader {
public:
    explicit Reader(std::string_view bytes) : at_(bytes.data()), end_(at_ + bytes.size()) {}

    bool atEnd() const { return at_ == end_; }

    char32_t next() {
        const unsigned first = byte(0);
        if (first < 0x80) return advance(1, first);
        if (first >= 0xC2 && first < 0xE0 && hasTail(1)) {
            return advance(2, (first & 0x1FU) << 6U | tail(1));
        }
        if (first >= 0xE0 && first < 0xF0 && hasTail(2)) {
            const char32_t value = (first & 0xFU) << 12U | tail(1) << 6U | tail(2);
            if (value >= 0x800) return advance(3, value);
        }
        if (first >= 0xF0 && first < 0xF5 && hasTail(3)) {
            const char32_t value = (first & 7U) << 18U | tail(1) << 12U | tail(2) << 6U | tail(3);
            if (value >= 0x10000 && value <= 0x10FFFF) return advance(4, value);
        }
        return advance(1, replacement);
    }

private:
    unsigned byte(int offset) const { return static_cast<unsigned char>(at_[offset]); }
    unsigned tail(int offset) const { return byte(offset) & 0x3FU; }
    bool hasTail(int count) const {
        if (end_ - at_ <= count) return false;
        for (int i = 1; i <= count; ++i) {
            if ((byte(i) & 0xC0U) != 0x80) return false;
        }
        return true;
    }
    char32_t advance(int count, char32_t value) {
        at_ += count;
        return value;
    }

    const char* at_;
    const char* end_;
};

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

char* writeBytes(char* out, char32_t value) {
    const auto put = [&out](char32_t bits) { *out++ = static_cast<char>(bits); };
    if (value < 0x80) {
        put(value);
    } else if (value < 0x800) {
        put(0xC0 | value >> 6U);
        put(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        put(0xE0 | value >> 12U);
        put(0x80 | (value >> 6U & 0x3F));
        put(0x80 | (value & 0x3F));
    } else {
        put(0xF0 | value >> 18U);
        put(0x80 | (value >> 12U & 0x3F));
        put(0x80 | (value >> 6U & 0x3F));
        put(0x80 | (value & 0x3F));
    }
    return out;
}

std::size_t scriptByteCount(const KrCore::String& text) {
    std::size_t count = 0;
    for (const unsigned short unit : text)
        count += unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
    return count;
}

void writeScriptBytes(const KrCore::String& text, char* out) {
    for (const unsigned short unit : text)
        out = writeBytes(out, unit);
}

} // namespace

void decode(std::string_view bytes, KrCore::String& text) {
    std::size_t length = 0;
    for (Reader reader(bytes); !reader.atEnd(); ++length) {
        if (reader.next() >= 0x10000) ++length;
    }
    if (length > std::size_t(KrCore::String::maxLength)) throw std::bad_alloc();
    text.init(static_cast<int>(length));
    if (length == 0) return;
    unsigned short* out = text.writable();
    for (Reader reader(bytes); !reader.atEnd();) {
        char32_t value = reader.next();
        if (value >= 0x10000) {
            value -= 0x10000;
            *out++ = static_cast<unsigned short>(0xD800 + (value >> 10U));
            value = 0xDC00 + (value & 0x3FF);
        }
        *out++ = static_cast<unsigned short>(value);
    }
}

void read(duk_context* context, duk_idx_t index, KrCore::String& text) {
    duk_size_t size = 0;
    const char* bytes = duk_get_lstring(context, index, &size);
    decode({bytes ? bytes : "", size}, text);
}

void push(duk_context* context, const KrCore::String& text) {
    const std::size_t size = scriptByteCount(text);
    if (char small[256]; size <= sizeof small) {
        writeScriptBytes(text, small);
        duk_push_lstring(context, small, size);
        return;
    }
    // The engine owns the buffer, so nothing is lost when it runs out of memory on the next line.
    writeScriptBytes(text, static_cast<char*>(duk_push_fixed_buffer(context, size)));
    duk_buffer_to_string(context, -1);
}

std::string toUtf8(const KrCore::String& text) {
    std::string result;
    char bytes[4];
    const int length = text.length();
    for (int i = 0; i < length; ++i) {
        char32_t value = text.wstr()[i];
        if (isHighSurrogate(value) && i + 1 < length && isLowSurrogate(text.wstr()[i + 1])) {
            value = 0x10000 + ((value - 0xD800) << 10U) + (text.wstr()[++i] - 0xDC00U);
        } else if (isHighSurrogate(value) || isLowSurrogate(value)) {
            value = replacement;
        }
        result.append(bytes, writeBytes(bytes, value));
    }
    return result;
}

std::string toUtf8(std::string_view scriptBytes) {
    KrCore::String text;
    decode(scriptBytes, text);
    return toUtf8(text);
}

} // namespace krhost::TextBridge
