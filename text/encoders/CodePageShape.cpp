#include "text/encoders/CodePageShape.h"

#include "text/encoders/CodePageNumbers.h"
#include "text/encoders/Surrogates.h"

namespace KrCore {

namespace {

using Stretch = CodePageShape::Stretch;

constexpr Stretch cutOff = {Stretch::Cut, 0};
constexpr Stretch openEnd = {Stretch::Open, 0};
constexpr Stretch wrong = {Stretch::Wrong, 0};

constexpr Stretch closedAt(int length) { return {Stretch::Closed, length}; }

/// Follows the escape and shift sequences of ISO 2022.
class Iso2022Scanner {
public:
    Iso2022Scanner(int page, const unsigned char* bytes, int remaining)
        : page_(page), bytes_(bytes), remaining_(remaining) {}

    Stretch measure() {
        while (position_ < remaining_) {
            if (!readToken()) return cutOff;
            if (isInitial()) return closedAt(position_);
        }
        return openEnd;
    }

private:
    static constexpr unsigned char shiftOut = 0x0E;
    static constexpr unsigned char shiftIn = 0x0F;
    static constexpr unsigned char escape = 0x1B;

    bool isInitial() const { return isAscii_ && !isShifted_ && !isDesignated_; }

    bool readToken() {
        switch (bytes_[position_]) {
        case escape:
            return readEscape();
        case shiftOut:
            isShifted_ = true;
            break;
        case shiftIn:
            isShifted_ = false;
            break;
        case '\n':
            isDesignated_ = false;
            break;
        default:
            return skip(characterWidth());
        }
        return skip(1);
    }

    int characterWidth() const {
        const bool isWide = isShifted_ ? !isJapanese() : isWide_;
        return isWide && bytes_[position_] > ' ' ? 2 : 1;
    }

    bool isJapanese() const { return page_ <= CodePageNumber::lastIso2022Japanese; }

    bool skip(int count) {
        position_ += count;
        return position_ <= remaining_;
    }

    /// Reads "ESC", bytes from 20 to 2F, and a final one.
    bool readEscape() {
        const unsigned char* sequence = bytes_ + position_ + 1;
        int length = 0;
        while (position_ + 1 + length < remaining_ && sequence[length] >= 0x20 &&
               sequence[length] <= 0x2F)
            ++length;
        if (!skip(length + 2)) return false;
        const unsigned char last = sequence[length];
        if (length == 0) return last != 'N' || skip(2); // A single shift: one character follows.
        if (sequence[0] == '(') {
            isAscii_ = last == 'B';
            isWide_ = false;
        } else if (sequence[0] == '$') {
            designateWide(length == 1 || sequence[1] == '(');
        }
        return true;
    }

    /// A set of two-byte characters goes either into use at once or behind the shifts, where it
    /// stays until the end of the line. In Korean text that set is always the same.
    void designateWide(bool isInUse) {
        if (!isInUse) {
            isDesignated_ = page_ != CodePageNumber::iso2022Korean;
            return;
        }
        isAscii_ = false;
        isWide_ = true;
    }

    const int page_;
    const unsigned char* bytes_;
    const int remaining_;
    int position_ = 0;
    bool isAscii_ = true;
    bool isWide_ = false;
    bool isShifted_ = false;
    bool isDesignated_ = false;
};

/// "~{" begins two-byte characters, "~}" or the end of the line ends them.
Stretch measureHz(const unsigned char* bytes, int remaining) {
    if (bytes[0] != '~') return closedAt(1);
    if (remaining < 2) return cutOff;
    if (bytes[1] != '{') return closedAt(2);
    for (int i = 2; i < remaining; i += 2) {
        if (bytes[i] == '\n') return closedAt(i + 1);
        if (i + 1 == remaining) return cutOff;
        if (bytes[i] == '~' && bytes[i + 1] == '}') return closedAt(i + 2);
    }
    return openEnd;
}

/// The value of a digit in base 64, or -1.
int base64Digit(unsigned char byte) {
    if (byte >= 'A' && byte <= 'Z') return byte - 'A';
    if (byte >= 'a' && byte <= 'z') return byte - 'a' + 26;
    if (byte >= '0' && byte <= '9') return byte - '0' + 52;
    return byte == '+' ? 62 : byte == '/' ? 63 : -1;
}

/// "+" begins units in base 64, which any other byte ends; a "-" there belongs to them.
Stretch measureUtf7(const unsigned char* bytes, int remaining) {
    if (bytes[0] != '+') return bytes[0] < 0x80 ? closedAt(1) : wrong;
    unsigned int bits = 0; // The last ones.
    int end = 1;
    for (; end < remaining && base64Digit(bytes[end]) >= 0; ++end)
        bits = bits << 6 | static_cast<unsigned int>(base64Digit(bytes[end]));
    const int digitCount = end - 1;
    const bool endsHere = end < remaining;
    const bool hasHyphen = endsHere && bytes[end] == '-';
    if (digitCount == 0 && hasHyphen) return closedAt(2); // A plus sign.
    const int spareBits = digitCount % 8 * 6 % 16;        // Eight digits are three units.
    const bool isWhole =
        digitCount > 0 && spareBits < 6 && !isHighSurrogate(bits >> spareBits & 0xFFFF);
    if (!endsHere) return isWhole ? openEnd : cutOff;
    return isWhole ? closedAt(hasHyphen ? end + 1 : end) : wrong;
}

/// Attributes change the script until the end of the line.
Stretch measureIscii(const unsigned char* bytes, int remaining) {
    for (int i = 0; i < remaining; ++i) {
        if (bytes[i] == '\n') return closedAt(i + 1);
    }
    return openEnd;
}

} // namespace

CodePageShape::CodePageShape(int page) : page_(page), states_(statesOf(page)) {}

CodePageShape::States CodePageShape::statesOf(int page) {
    if (page >= CodePageNumber::firstIso2022 && page <= CodePageNumber::lastIso2022)
        return States::Iso2022;
    if (page >= CodePageNumber::firstIscii && page <= CodePageNumber::lastIscii)
        return States::Iscii;
    if (page == CodePageNumber::hz) return States::Hz;
    return page == CodePageNumber::utf7 ? States::Utf7 : States::None;
}

bool CodePageShape::hasLeadBytes() const {
    for (const bool isLead : isLead_) {
        if (isLead) return true;
    }
    return false;
}

Stretch CodePageShape::measure(const unsigned char* bytes, int remaining) const {
    switch (states_) {
    case States::None:
        return measureCharacter(bytes, remaining);
    case States::Iso2022:
        return Iso2022Scanner(page_, bytes, remaining).measure();
    case States::Hz:
        return measureHz(bytes, remaining);
    case States::Utf7:
        return measureUtf7(bytes, remaining);
    case States::Iscii:
        return measureIscii(bytes, remaining);
    }
    return cutOff;
}

Stretch CodePageShape::measureCharacter(const unsigned char* bytes, int remaining) const {
    int length = 1;
    if (isLead_[bytes[0]]) {
        length = 2;
        if (page_ == CodePageNumber::gb18030 && remaining > 1 && bytes[1] >= '0' && bytes[1] <= '9')
            length = 4;
        if (page_ == CodePageNumber::eucJapanese && bytes[0] == 0x8F) length = 3;
    }
    return length <= remaining ? closedAt(length) : cutOff;
}

} // namespace KrCore
