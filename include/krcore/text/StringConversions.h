#pragma once

/// @file
/// `String` from and to the standard library's text, for hosts written in C++. Nothing here can
/// fail: what is not valid text becomes U+FFFD. Where an error has to be noticed use
/// `String::encode` and `String::decode`.

#include <krcore/text/String.h>

#include <ostream>
#include <string>
#include <string_view>

namespace KrCore {

namespace Detail {

/// The code point at the front of `bytes`, which is taken off; of malformed text a byte goes at a
/// time.
inline unsigned int takeCodePoint(std::string_view& bytes) {
    constexpr unsigned int smallest[] = {0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    if (lead < 0x80) return lead;
    const unsigned int followers = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < followers) return 0xFFFD;
    unsigned int codePoint = lead & (0x3FU >> followers);
    for (unsigned int i = 0; i < followers; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0U) != 0x80) return 0xFFFD;
        codePoint = codePoint << 6 | (byte & 0x3FU);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest[followers] || codePoint > 0x10FFFF || isSurrogate) return 0xFFFD;
    bytes.remove_prefix(followers);
    return codePoint;
}

inline void appendUtf8(std::string& out, unsigned int codePoint) {
    const auto add = [&out](unsigned int byte) { out.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) return add(codePoint);
    if (codePoint < 0x800) {
        add(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            add(0xE0 | codePoint >> 12);
        } else {
            add(0xF0 | codePoint >> 18);
            add(0x80 | (codePoint >> 12 & 0x3F));
        }
        add(0x80 | (codePoint >> 6 & 0x3F));
    }
    add(0x80 | (codePoint & 0x3F));
}

} // namespace Detail

inline String fromUtf8(std::string_view bytes) {
    String result;
    while (!bytes.empty()) {
        const unsigned int codePoint = Detail::takeCodePoint(bytes);
        if (codePoint < 0x10000) {
            result.append(static_cast<unsigned short>(codePoint));
        } else {
            result.append(static_cast<unsigned short>(0xD7C0 + (codePoint >> 10)));
            result.append(static_cast<unsigned short>(0xDC00 + (codePoint & 0x3FF)));
        }
    }
    return result;
}

inline std::string toUtf8(const String& text) {
    std::string result;
    result.reserve(std::size_t(text.length()));
    for (const unsigned short* at = text.begin(); at != text.end(); ++at) {
        unsigned int codePoint = *at;
        const bool isPair = (codePoint & 0xFC00) == 0xD800 && (at[1] & 0xFC00) == 0xDC00;
        if (isPair) codePoint = 0x10000 + ((codePoint & 0x3FF) << 10) + (*++at & 0x3FFU);
        Detail::appendUtf8(result, (codePoint & 0xFFFFF800) == 0xD800 ? 0xFFFD : codePoint);
    }
    return result;
}

/// Unit by unit, lone surrogates and U+0000 included.
inline String fromUtf16(std::u16string_view units) {
    String result;
    result.init(units.size() > std::size_t(String::maxLength) ? String::maxLength + 1
                                                              : static_cast<int>(units.size()));
    if (!units.empty())
        std::memcpy(result.writable(), units.data(), units.size() * sizeof(char16_t));
    return result;
}

inline std::u16string toUtf16(const String& text) {
    std::u16string result(std::size_t(text.length()), u'\0');
    std::memcpy(result.data(), text.wstr(), result.size() * sizeof(char16_t));
    return result;
}

/// As UTF-8; test programs print strings with it as well.
inline std::ostream& operator<<(std::ostream& stream, const String& text) {
    return stream << toUtf8(text);
}

} // namespace KrCore
