#include "regexp/PatternReader.h"

#include <algorithm>
#include <limits>

namespace KrCore {

namespace {

bool isSpecial(int unit) {
    switch (unit) {
    case '|':
    case '(':
    case ')':
    case '[':
    case ']':
    case '{':
    case '^':
    case '$':
    case '*':
    case '+':
    case '?':
    case '.':
        return true;
    default:
        return false;
    }
}

bool isDigit(int unit) { return unit >= '0' && unit <= '9'; }

bool isOctalDigit(int unit) { return unit >= '0' && unit <= '7'; }

/// The value of a digit of any radix up to 16; 16 for what is none.
int digitValue(int unit) {
    if (isDigit(unit)) return unit - '0';
    if (unit >= 'a' && unit <= 'f') return unit - 'a' + 10;
    if (unit >= 'A' && unit <= 'F') return unit - 'A' + 10;
    return 16;
}

constexpr Token endToken = {TokenKind::End, 0};

Token unitToken(int unit) { return {TokenKind::Unit, unit}; }

} // namespace

void PatternReader::fail(int index) {
    if (errorIndex_ < 0) errorIndex_ = index;
}

Token PatternReader::read(int groupCount) {
    if (index_ >= length_ || hasFailed()) return endToken;
    const int unit = units_[index_++];
    if (unit == '\\') return readEscape(false, groupCount);
    return {isSpecial(unit) ? TokenKind::Special : TokenKind::Unit, unit};
}

Token PatternReader::readInBrackets() {
    if (index_ >= length_) fail(length_ - 1);
    if (hasFailed()) return endToken;
    const int unit = units_[index_++];
    if (unit == '\\') return readEscape(true, 0);
    return {unit == ']' || unit == '-' ? TokenKind::Special : TokenKind::Unit, unit};
}

int PatternReader::readNumber() {
    constexpr int largest = std::numeric_limits<int>::max();
    if (!isDigit(peek())) return -1;
    long long number = 0;
    for (; isDigit(peek()); skip())
        number = std::min<long long>(number * 10 + (peek() - '0'), largest);
    return static_cast<int>(number);
}

Token PatternReader::readEscape(bool inBrackets, int groupCount) {
    if (index_ >= length_) {
        fail(length_ - 1);
        return endToken;
    }
    const int unit = units_[index_++];
    switch (unit) {
    case '0':
        return readNull();
    case 'o':
        return readDigits(unit, 3, 8);
    case 'x':
        return readDigits(unit, 2, 16);
    case 'u':
        return readDigits(unit, 4, 16);
    case 'c':
        return readControl();
    case 'f':
        return unitToken('\f');
    case 'n':
        return unitToken('\n');
    case 'r':
        return unitToken('\r');
    case 't':
        return unitToken('\t');
    case 'v':
        return unitToken('\v');
    case 'b':
        return {TokenKind::ClassEscape, unit};
    case 'B':
        if (inBrackets) fail(index_ - 1);
        [[fallthrough]];
    case 'd':
    case 'D':
    case 's':
    case 'S':
    case 'w':
    case 'W':
        return {TokenKind::ClassEscape, unit};
    default:
        break;
    }
    if (!isDigit(unit)) return unitToken(unit);
    --index_;
    return inBrackets ? readOctal() : readReference(groupCount);
}

/// A number beyond the groups that are open so far is one digit of a reference ahead, or when there
/// are more digits an octal number.
Token PatternReader::readReference(int groupCount) {
    const int start = index_;
    const int group = readNumber();
    if (group > groupCount && index_ - start > 1) {
        index_ = start;
        return readOctal();
    }
    highestReference_ = std::max(highestReference_, group);
    return {TokenKind::BackReference, group};
}

/// Up to three octal digits. 8 and 9 stand for themselves.
Token PatternReader::readOctal() {
    if (!isOctalDigit(peek())) {
        skip();
        return unitToken(peek(-1));
    }
    int value = 0;
    for (int count = 0; count < 3 && isOctalDigit(peek()); ++count, skip())
        value = value * 8 + (peek() - '0');
    return unitToken(value);
}

/// Exactly so many digits, or the letter stands for itself.
Token PatternReader::readDigits(int letter, int digitCount, int radix) {
    int value = 0;
    for (int i = 0; i < digitCount; ++i) {
        const int digit = digitValue(peek(i));
        if (digit >= radix) return unitToken(letter);
        value = value * radix + digit;
    }
    skip(digitCount);
    return unitToken(value);
}

/// Two octal digits may follow, no more and no less.
Token PatternReader::readNull() {
    if (!isOctalDigit(peek()) || !isOctalDigit(peek(1))) return unitToken(0);
    const int value = (peek() - '0') * 8 + (peek(1) - '0');
    skip(2);
    return unitToken(value);
}

Token PatternReader::readControl() {
    const int unit = peek();
    if (unit >= 'A' && unit <= 'Z') {
        skip();
        return unitToken(unit - 64);
    }
    if (unit >= 'a' && unit <= 'z') {
        skip();
        return unitToken(unit - 96);
    }
    fail(std::min(index_, length_ - 1));
    return endToken;
}

} // namespace KrCore
