#pragma once

#include <krcore/text/String.h>

namespace KrCore {

/// What one step through a pattern reads.
enum class TokenKind {
    Unit,          ///< Stands for itself.
    Special,       ///< One of | ( ) [ ] { ^ $ * + ? .
    ClassEscape,   ///< b, B, d, D, s, S, w or W behind a "\".
    BackReference, ///< The value is the group.
    End            ///< There is no more; also after an error.
};

struct Token {
    TokenKind kind;
    int value;

    bool isSpecial(char unit) const { return kind == TokenKind::Special && value == unit; }
};

/// Reads the units and escapes of a pattern one by one.
class PatternReader {
public:
    explicit PatternReader(const String& pattern)
        : units_(pattern.wstr()), length_(pattern.length()) {}

    /// `groupCount` is the number of groups that have been opened so far: how the digits of a
    /// reference are read depends on it.
    Token read(int groupCount);
    /// The same within brackets, where most units have no meaning.
    Token readInBrackets();

    /// The unit that comes next, whatever it means; -1 at the end.
    int peek(int ahead = 0) const { return index_ + ahead < length_ ? units_[index_ + ahead] : -1; }
    void skip(int count = 1) { index_ += count; }
    /// Reads decimal digits, up to 2147483647; -1 when there is none.
    int readNumber();

    int index() const { return index_; }
    void setIndex(int index) { index_ = index; }
    String textFrom(int start) const { return {units_ + start, index_ - start}; }

    /// Records the first mistake, at an index of the pattern.
    void fail(int index);
    bool hasFailed() const { return errorIndex_ >= 0; }
    int errorIndex() const { return errorIndex_; }
    int highestReference() const { return highestReference_; }

private:
    Token readEscape(bool inBrackets, int groupCount);
    Token readReference(int groupCount);
    Token readDigits(int letter, int digitCount, int radix);
    Token readOctal();
    Token readNull();
    Token readControl();

    const unsigned short* units_;
    int length_;
    int index_ = 0;
    int errorIndex_ = -1;
    int highestReference_ = 0;
};

} // namespace KrCore
