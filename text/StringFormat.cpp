// The formatter behind print and vprint.

#include <krcore/text/String.h>

#include "text/Decoding.h"
#include "text/StringBuffer.h"
#include "text/TextArgument.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>

namespace KrCore {

namespace {

/// A `va_list` is an array on one system and a pointer on the other; inside a record it can be
/// handed on by reference on both.
struct Arguments {
    std::va_list list;
};

/// What stands between "%" and the conversion letter.
struct Directive {
    bool leftJustified = false;
    bool plusSign = false;
    bool zeroPadded = false;
    bool isWide = false;
    int width = 0;
    int precision = -1; ///< -1: none given.
};

/// A converted number: ASCII, with its sign in front.
class NumberText {
public:
    char* begin() { return text_; }
    char* capacityEnd() { return text_ + sizeof text_; }
    char* end() { return end_; }
    void setEnd(char* end) { end_ = end; }
    int length() const { return static_cast<int>(end_ - text_); }
    const char* text() const { return text_; }
    bool isSigned() const { return end_ != text_ && (*text_ == '-' || *text_ == '+'); }

    void add(char ch) { *end_++ = ch; }
    void raise() {
        for (char* at = text_; at != end_; ++at) {
            if (*at >= 'a' && *at <= 'z') *at = static_cast<char>(*at - 'a' + 'A');
        }
    }

private:
    /// The largest double has 309 digits before the point; 14 may follow.
    char text_[384];
    char* end_ = text_;
};

constexpr int mostPlaces = 14;
constexpr int defaultPlaces = 6;
constexpr int shownCharacters = 17;
constexpr int pointerWidth = 16;

bool isUpper(unsigned short letter) { return letter >= 'A' && letter <= 'Z'; }

unsigned short lowered(unsigned short letter) {
    return isUpper(letter) ? static_cast<unsigned short>(letter - 'A' + 'a') : letter;
}

// ---- Numbers ----

void putInteger(NumberText& out, unsigned int value, int base) {
    out.setEnd(std::to_chars(out.end(), out.capacityEnd(), value, base).ptr);
}

/// Kept: no more than 17 characters of the number are shown, a double means nothing beyond; the
/// digits behind them become zeros. Held by StringFormat.PrintsDoubles.
void zeroUnshownDigits(NumberText& number) {
    const int first = number.isSigned() ? 1 : 0;
    for (char* at = number.begin() + std::min(first + shownCharacters, number.length());
         at != number.end(); ++at) {
        if (*at >= '0' && *at <= '9') *at = '0';
    }
}

/// std::to_chars writes what printf writes, but knows no locale.
/// Kept: `g` does not hear of a precision. Held by StringFormat.PrintsDoubles.
void putFloat(NumberText& out, double value, unsigned short letter, int precision) {
    const int places =
        letter == 'g' || precision < 0 ? defaultPlaces : std::min(precision, mostPlaces);
    const auto format = letter == 'g'   ? std::chars_format::general
                        : letter == 'e' ? std::chars_format::scientific
                                        : std::chars_format::fixed;
    out.setEnd(std::to_chars(out.end(), out.capacityEnd(), value, format, places).ptr);
    if (format == std::chars_format::fixed && std::isfinite(value)) zeroUnshownDigits(out);
}

// ---- The formatter ----

/// Fills one format in. The result is a text of its own, because format and arguments may lie in
/// the string that is printed to.
class Formatter {
public:
    Formatter(const unsigned short* format, Arguments& args) : at_(format), args_(args) {}

    String run() {
        while (*at_ != 0) {
            const unsigned short* run = at_;
            while (*at_ != 0 && *at_ != '%') {
                ++at_;
            }
            out_.append(run, static_cast<int>(at_ - run));
            if (*at_ == '%') fillIn();
        }
        return std::move(out_);
    }

private:
    void fillIn() {
        const unsigned short* start = at_++;
        const Directive directive = readDirective();
        if (*at_ == 0) {
            out_.append(start, static_cast<int>(at_ - start));
        } else {
            convert(*at_++, directive);
        }
    }

    Directive readDirective() {
        Directive directive;
        for (;; ++at_) {
            if (*at_ == '-')
                directive.leftJustified = true;
            else if (*at_ == '+')
                directive.plusSign = true;
            else if (*at_ == '0')
                directive.zeroPadded = true;
            else
                break;
        }
        const int width = readCount();
        if (width < 0) directive.leftJustified = true;
        directive.width = width == INT_MIN ? INT_MAX : std::abs(width);
        if (*at_ == '.') {
            ++at_;
            directive.precision = std::max(readCount(), -1);
        }
        for (; *at_ == 'l' || *at_ == 'h' || *at_ == 'H' || *at_ == 'L'; ++at_) {
            if (*at_ == 'l') directive.isWide = true;
        }
        return directive;
    }

    /// A number, or an argument in the place of "*"; 0 when neither is there.
    int readCount() {
        if (*at_ == '*') {
            ++at_;
            return va_arg(args_.list, int);
        }
        std::int64_t count = 0;
        for (; *at_ >= '0' && *at_ <= '9'; ++at_) {
            count = std::min<std::int64_t>(count * 10 + (*at_ - '0'), INT_MAX);
        }
        return static_cast<int>(count);
    }

    void convert(unsigned short letter, Directive directive) {
        switch (lowered(letter)) {
        case 'd':
            return convertDecimal(directive);
        case 'u':
            return convertUnsigned(letter, 10, directive);
        case 'o':
            return convertUnsigned(letter, 8, directive);
        case 'x':
            return convertUnsigned(letter, 16, directive);
        case 'b':
            return convertUnsigned(letter, 2, directive);
        case 'p':
            return convertPointer(letter, directive);
        case 'c':
            return convertCharacter(directive);
        case 's':
            return convertText(letter, directive);
        case 'e':
        case 'f':
        case 'n':
        case 'g':
            return convertFloat(letter, directive);
        default:
            out_.append(letter);
        }
    }

    void convertDecimal(const Directive& directive) {
        const int value = va_arg(args_.list, int);
        NumberText number;
        if (value < 0)
            number.add('-');
        else if (directive.plusSign)
            number.add('+');
        const auto bits = static_cast<unsigned int>(value);
        putInteger(number, value < 0 ? 0U - bits : bits, 10);
        putNumber(number, directive);
    }

    /// Kept: without `l` only the low 16 bits, one unit of text, are printed. Held by
    /// StringFormat.PrintsIntegers.
    void convertUnsigned(unsigned short letter, int base, const Directive& directive) {
        const unsigned int value = va_arg(args_.list, unsigned int);
        NumberText number;
        if (base == 10 && directive.plusSign) number.add('+');
        putInteger(number, directive.isWide ? value : value & 0xFFFFU, base);
        if (isUpper(letter)) number.raise();
        putNumber(number, directive);
    }

    void convertPointer(unsigned short letter, Directive directive) {
        const void* pointer = va_arg(args_.list, const void*);
        NumberText number;
        putInteger(number, static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(pointer)),
                   16);
        if (isUpper(letter)) number.raise();
        directive.width = pointerWidth;
        putNumber(number, directive);
    }

    void convertFloat(unsigned short letter, Directive directive) {
        const double value = va_arg(args_.list, double);
        NumberText number;
        if (directive.plusSign && !std::signbit(value)) number.add('+');
        if (std::isnan(value)) {
            for (char ch : {'n', 'a', 'n'}) {
                number.add(ch);
            }
        } else {
            putFloat(number, value, lowered(letter), directive.precision);
        }
        if (isUpper(letter)) number.raise();
        if (!std::isfinite(value)) directive.zeroPadded = false;
        putNumber(number, directive);
    }

    void convertCharacter(const Directive& directive) {
        const int value = va_arg(args_.list, int);
        if (directive.isWide) {
            const auto unit = static_cast<unsigned short>(value);
            putText(&unit, unit == 0 ? 0 : 1, directive);
            return;
        }
        const char byte = static_cast<char>(value);
        putDecoded(&byte, 1, directive);
    }

    /// Kept: the upper-case letter takes its argument and prints nothing.
    void convertText(unsigned short letter, const Directive& directive) {
        const void* argument = va_arg(args_.list, const void*);
        if (isUpper(letter)) return; // held by StringFormat.TakesTheArgumentOfUpperCaseS
        const int limit = directive.precision < 0 ? INT_MAX : directive.precision;
        if (!argument) {
            putAscii("(null)", std::min(6, limit), directive);
        } else if (directive.isWide) {
            const auto* text = static_cast<const unsigned short*>(argument);
            putText(text, countUnits(text, limit), directive);
        } else {
            const auto* text = static_cast<const char*>(argument);
            putDecoded(text, countBytes(text, limit), directive);
        }
    }

    // ---- Output ----

    /// In the default encoding; text that it cannot read is widened rather than lost. What the
    /// precision has cut off in the middle of a character is left out.
    void putDecoded(const char* bytes, int count, const Directive& directive) {
        String decoded;
        if (decodeBytes(bytes, count, Encoder::getDefault(), directive.precision < 0, decoded) !=
            ErrorCode::Ok) {
            decoded.clear();
            decoded.append(bytes, count);
        }
        putText(decoded.wstr(), decoded.length(), directive);
    }

    void putAscii(const char* text, int count, const Directive& directive) {
        String widened;
        widened.append(text, count);
        putText(widened.wstr(), count, directive);
    }

    void putText(const unsigned short* units, int count, const Directive& directive) {
        const bool inFront = !directive.leftJustified;
        if (inFront) pad(directive.zeroPadded ? '0' : ' ', directive.width - count);
        out_.append(units, count);
        if (!inFront) pad(' ', directive.width - count);
    }

    /// Zeros go between the sign and the digits.
    void putNumber(const NumberText& number, const Directive& directive) {
        const int missing = directive.width - number.length();
        const int signLength = directive.zeroPadded && number.isSigned() ? 1 : 0;
        if (!directive.leftJustified && !directive.zeroPadded) pad(' ', missing);
        out_.append(number.text(), signLength);
        if (!directive.leftJustified && directive.zeroPadded) pad('0', missing);
        out_.append(number.text() + signLength, number.length() - signLength);
        if (directive.leftJustified) pad(' ', missing);
    }

    void pad(unsigned short unit, int count) {
        if (count <= 0) return;
        const int end = out_.length();
        out_.adjust(StringBuffer::checkedLength(std::int64_t(end) + count));
        std::fill_n(out_.writable() + end, count, unit);
    }

    const unsigned short* at_;
    Arguments& args_;
    String out_;
};

void format(String& target, const unsigned short* fmt, std::va_list list) {
    if (!fmt) return target.erase();
    Arguments args;
    va_copy(args.list, list);
    StringBuffer::replaceContents(target, Formatter(fmt, args).run());
    va_end(args.list);
}

} // namespace

void String::print(const char* fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    vprint(fmt, args);
    va_end(args);
}

void String::print(const unsigned short* fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    vprint(fmt, args);
    va_end(args);
}

void String::vprint(const char* fmt, std::va_list args) {
    const String widened(fmt);
    format(*this, widened.wstr(), args);
}

void String::vprint(const unsigned short* fmt, std::va_list args) { format(*this, fmt, args); }

} // namespace KrCore
