#include "PathBytes.h"

#include <cstddef>
#include <cstring>
#include <string_view>

namespace KrCore::Platform {

namespace {

constexpr unsigned short escapeBase = 0xDC00;

bool isSeparator(unsigned short unit) { return unit == '\\' || unit == '/'; }
bool isLowerLetter(unsigned int unit) { return unit >= 'a' && unit <= 'z'; }
bool isUpperLetter(unsigned int unit) { return unit >= 'A' && unit <= 'Z'; }
bool isHighSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(unsigned short unit) { return (unit & 0xFC00) == 0xDC00; }

/// The byte that a unit without a partner stands for, or -1.
int escapedByte(unsigned short unit) {
    const unsigned int byte = unit - unsigned(escapeBase);
    return byte == '\\' || isUpperLetter(byte) || (byte >= 0x80 && byte <= 0xFF) ? int(byte) : -1;
}

/// The length of the well-formed UTF-8 sequence in front and its code point; 0 when there is none.
int readUtf8(std::string_view bytes, unsigned int& codePoint) {
    const auto byteAt = [bytes](std::size_t index) {
        return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
    };
    const unsigned int lead = byteAt(0);
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    }
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    codePoint = lead & (0x7FU >> length);
    for (int i = 1; i < length; ++i) {
        const unsigned int next = byteAt(static_cast<std::size_t>(i));
        if ((next & 0xC0) != 0x80) return 0;
        codePoint = codePoint << 6 | (next & 0x3F);
    }
    constexpr unsigned int smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = (codePoint & 0xFFFFF800) == 0xD800;
    return codePoint < smallest[length] || codePoint > 0x10FFFF || isSurrogate ? 0 : length;
}

/// Gathers units and hands them on in blocks.
class Units {
public:
    explicit Units(TextSink& sink) : sink_(sink) {}

    void put(unsigned int unit) {
        if (count_ == std::size(units_)) flush();
        units_[count_++] = static_cast<unsigned short>(unit);
    }
    void putName(std::string_view name) {
        while (!name.empty()) {
            unsigned int codePoint = 0;
            const int length = readUtf8(name, codePoint);
            if (length == 0 || codePoint == '\\') {
                put(escapeBase + static_cast<unsigned char>(name[0]));
                name.remove_prefix(1);
                continue;
            }
            name.remove_prefix(static_cast<std::size_t>(length));
            if (codePoint < 0x10000) {
                put(codePoint);
            } else {
                put(0xD7C0 + (codePoint >> 10));
                put(0xDC00 + (codePoint & 0x3FF));
            }
        }
    }
    void putNameInRoot(std::string_view name) {
        if (name.size() == 1 && isUpperLetter(static_cast<unsigned char>(name[0]))) {
            put(escapeBase + static_cast<unsigned char>(name[0]));
        } else {
            putName(name);
        }
    }
    void flush() {
        if (count_ > 0) sink_.take({units_, count_});
        count_ = 0;
    }

private:
    TextSink& sink_;
    unsigned short units_[256];
    std::size_t count_ = 0;
};

std::string_view takeSegment(std::string_view& path) {
    const std::size_t length = path.find('/');
    const std::string_view segment = path.substr(0, length);
    path.remove_prefix(length == std::string_view::npos ? path.size() : length + 1);
    return segment;
}

void putNames(std::string_view path, Units& units) {
    bool isFirst = true;
    while (!path.empty()) {
        const std::string_view name = takeSegment(path);
        if (name.empty()) continue;
        if (!isFirst) units.put('\\');
        units.putName(name);
        isFirst = false;
    }
}

} // namespace

PathBytes::PathBytes(PathUnits path) : isValid_(takeRoot(path) && takeNames(path)) {}

bool PathBytes::takeRoot(PathUnits& path) {
    constexpr unsigned short verbatim[] = {'\\', '\\', '?', '\\'};
    if (path.size() >= 4 && std::memcmp(path.data(), verbatim, sizeof verbatim) == 0)
        path = path.subspan(4);
    const auto unitAt = [&path](std::size_t index) {
        return index < path.size() ? path[index] : static_cast<unsigned short>(0);
    };
    if (isSeparator(unitAt(0))) {
        const bool isServer = isSeparator(unitAt(1));
        const bool isDriveInDisguise =
            isUpperLetter(unitAt(1)) && (path.size() == 2 || isSeparator(unitAt(2)));
        return !isServer && !isDriveInDisguise;
    }
    const unsigned int letter = unitAt(0) | 0x20U;
    if (!isLowerLetter(letter) || unitAt(1) != ':') return false;
    if (path.size() > 2 && !isSeparator(unitAt(2))) return false;
    path = path.subspan(2);
    return put('/') && put(static_cast<char>(letter));
}

bool PathBytes::takeNames(PathUnits path) {
    for (std::size_t i = 0; i < path.size(); ++i) {
        const unsigned short unit = path[i];
        const bool isPair =
            isHighSurrogate(unit) && i + 1 < path.size() && isLowSurrogate(path[i + 1]);
        bool fits = unit != 0;
        if (isSeparator(unit)) {
            fits = put('/');
        } else if (isPair) {
            fits = putCodePoint(0x10000 + ((unit & 0x3FFU) << 10) + (path[++i] & 0x3FFU));
        } else if ((unit & 0xF800) == 0xD800) {
            const int byte = escapedByte(unit);
            fits = byte >= 0 && put(static_cast<char>(byte));
        } else {
            fits = fits && putCodePoint(unit);
        }
        if (!fits) return false;
    }
    bytes_[length_] = 0;
    return true;
}

bool PathBytes::put(char byte) {
    if (length_ + 1 >= PATH_MAX) return false;
    bytes_[length_++] = byte;
    return true;
}

bool PathBytes::putCodePoint(unsigned int codePoint) {
    const auto putTail = [this, codePoint](int shift) {
        return put(static_cast<char>(0x80 | (codePoint >> shift & 0x3F)));
    };
    if (codePoint < 0x80) return put(static_cast<char>(codePoint));
    if (codePoint < 0x800) return put(static_cast<char>(0xC0 | codePoint >> 6)) && putTail(0);
    if (codePoint < 0x10000)
        return put(static_cast<char>(0xE0 | codePoint >> 12)) && putTail(6) && putTail(0);
    return put(static_cast<char>(0xF0 | codePoint >> 18)) && putTail(12) && putTail(6) &&
           putTail(0);
}

void takePath(const char* path, TextSink& sink) {
    std::string_view rest(path);
    while (rest.starts_with('/'))
        rest.remove_prefix(1);
    const std::string_view first = takeSegment(rest);
    Units units(sink);
    if (first.size() == 1 && isLowerLetter(static_cast<unsigned char>(first[0]))) {
        units.put(static_cast<unsigned char>(first[0]) & ~0x20U);
        units.put(':');
        units.put('\\');
    } else {
        units.put('\\');
        units.putNameInRoot(first);
        if (!rest.empty()) units.put('\\');
    }
    putNames(rest, units);
    units.flush();
}

void takeName(const char* name, bool isInRoot, TextSink& sink) {
    Units units(sink);
    isInRoot ? units.putNameInRoot(name) : units.putName(name);
    units.flush();
}

void takeAnyPath(const char* path, TextSink& sink) {
    if (*path == '/') return takePath(path, sink);
    Units units(sink);
    putNames(path, units);
    units.flush();
}

} // namespace KrCore::Platform
