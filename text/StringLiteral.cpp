// Script literals: writing one and reading one.

#include <krcore/text/String.h>

#include "text/HexDigits.h"
#include "text/StringBuffer.h"
#include "text/Units.h"

#include <algorithm>

namespace KrCore {

namespace {

// ---- Writing ----

/// The letter behind the backslash for the units that have a short escape, else 0.
char shortEscape(unsigned short unit) {
    switch (unit) {
    case '\b':
        return 'b';
    case '\t':
        return 't';
    case '\n':
        return 'n';
    case '\f':
        return 'f';
    case '\r':
        return 'r';
    case '"':
    case '\\':
        return static_cast<char>(unit);
    default:
        return 0;
    }
}

bool isControl(unsigned short unit) { return unit < 32 || unit == 127; }

int escapedLength(unsigned short unit, bool unicode) {
    if (shortEscape(unit)) return 2;
    if (isControl(unit)) return 4;
    return unicode && unit > 127 ? 6 : 1;
}

unsigned short* putEscaped(unsigned short* out, unsigned short unit, bool unicode) {
    const int length = escapedLength(unit, unicode);
    if (length == 1) {
        *out++ = unit;
        return out;
    }
    *out++ = '\\';
    if (length == 2) {
        *out++ = static_cast<unsigned short>(shortEscape(unit));
        return out;
    }
    *out++ = length == 4 ? 'x' : 'u';
    return putHex(out, unit, length - 2);
}

// ---- Reading ----

constexpr unsigned short lineSeparator = 0x2028;
constexpr unsigned short paragraphSeparator = 0x2029;

bool isLineEnd(unsigned short unit) {
    return unit == '\n' || unit == '\r' || unit == lineSeparator || unit == paragraphSeparator;
}

/// Reads one literal or bare token; `next()` is behind it then.
class LiteralReader {
public:
    LiteralReader(const unsigned short* at, const unsigned short* end) : at_(at), end_(end) {}

    bool read(String& token) {
        if (!atEnd() && (*at_ == '"' || *at_ == '\'')) quote_ = *at_++;
        while (true) {
            copyPlainRun(token);
            if (atEnd()) return quote_ == 0;
            if (isLineEnd(*at_)) {
                skipLineEnd();
                return quote_ == 0;
            }
            const unsigned short unit = *at_++;
            if (unit != '\\') return true; // The closing quote: a plain run ends at nothing else.
            if (!readEscape(token)) return false;
        }
    }

    const unsigned short* next() const { return at_; }

private:
    bool atEnd() const { return at_ == end_; }

    void copyPlainRun(String& token) {
        const unsigned short* stop = std::find_if(at_, end_, [this](unsigned short unit) {
            return unit == '\\' || isLineEnd(unit) || (quote_ != 0 && unit == quote_);
        });
        token.append(at_, static_cast<int>(stop - at_));
        at_ = stop;
    }

    void skipLineEnd() {
        const bool isPair = end_ - at_ > 1 && at_[0] == '\r' && at_[1] == '\n';
        at_ += isPair ? 2 : 1;
    }

    /// What stands behind a backslash. False for a malformed hexadecimal escape.
    bool readEscape(String& token) {
        if (atEnd()) {
            token.append('\\');
            return true;
        }
        if (isLineEnd(*at_)) {
            skipLineEnd();
            return true;
        }
        const unsigned short letter = *at_++;
        switch (letter) {
        case 'x':
        case 'X':
            return readHex(token, 2, 2);
        case 'u':
            return readHex(token, 4, 4);
        case 'U':
            return readHex(token, 1, 8);
        default:
            token.append(letter >= '0' && letter <= '7' ? readOctal(letter) : simpleEscape(letter));
            return true;
        }
    }

    static unsigned short simpleEscape(unsigned short letter) {
        switch (letter) {
        case 'b':
            return '\b';
        case 't':
            return '\t';
        case 'n':
            return '\n';
        case 'v':
            return '\v';
        case 'f':
            return '\f';
        case 'r':
            return '\r';
        default:
            return letter;
        }
    }

    /// Up to three digits, the first of which is read already; three only up to 377.
    unsigned short readOctal(unsigned short first) {
        const int digits = first <= '3' ? 3 : 2;
        int value = first - '0';
        for (int i = 1; i < digits && !atEnd() && *at_ >= '0' && *at_ <= '7'; ++i) {
            value = value * 8 + (*at_++ - '0');
        }
        return static_cast<unsigned short>(value);
    }

    bool readHex(String& token, int fewest, int most) {
        unsigned int value = 0;
        int digits = 0;
        for (; digits < most && !atEnd() && hexDigit(*at_) >= 0; ++digits) {
            value = value * 16 + static_cast<unsigned int>(hexDigit(*at_++));
        }
        if (digits < fewest || value > 0x10FFFF) return false;
        unsigned short units[2];
        token.append(units, putCodePoint(units, value));
        return true;
    }

    const unsigned short* at_;
    const unsigned short* end_;
    unsigned short quote_ = 0;
};

} // namespace

String String::escape(bool unicode) const {
    std::int64_t escaped = 2;
    for (unsigned short unit : *this) {
        escaped += escapedLength(unit, unicode);
    }
    String result;
    result.init(StringBuffer::checkedLength(escaped));
    unsigned short* out = result.buffer_->units();
    *out++ = '"';
    if (escaped == std::int64_t(length()) + 2) {
        copyUnits(out, wstr(), length());
        out += length();
    } else {
        for (unsigned short unit : *this) {
            out = putEscaped(out, unit, unicode);
        }
    }
    *out = '"';
    return result;
}

bool String::parse(String& result, int& pos) const {
    String token;
    LiteralReader reader(wstr() + std::clamp(pos, 0, length()), end());
    const bool isComplete = reader.read(token);
    pos = static_cast<int>(reader.next() - wstr());
    StringBuffer::replaceContents(result, std::move(token));
    return isComplete;
}

bool String::parse(String& result) {
    String token;
    int consumed = 0;
    const bool isComplete = parse(token, consumed);
    if (isComplete) erase(0, consumed);
    StringBuffer::replaceContents(result, std::move(token));
    return isComplete;
}

} // namespace KrCore
