#pragma once

namespace KrCore {

class String;

/// What may stand behind a number, as the flags of `Variant::scanDouble` say it.
enum class TrailingText : int { Refused = 0, AfterBlank = 1, Allowed = 2 };

TrailingText trailingTextOf(int flags);

/// Reads one number off the front of a text; see `Variant::scanDouble`. The text must stay alive.
class NumberScan {
public:
    explicit NumberScan(const String& text);

    double scanDouble(TrailingText trailing);
    double scanInteger(int radix, TrailingText trailing);

    /// Where scanning stopped: the rest of the text begins here.
    int position() const;

private:
    struct Decimal;

    bool atEnd() const { return current_ == end_ || *current_ == 0; }
    bool atBlank() const;
    void skipBlanks();
    bool readSign();
    bool skipWord(const char* word);
    bool atHexadecimal() const;
    double nothingBehindBlanks();
    double unsignedDouble();
    void readDigits(Decimal& decimal);
    void readRun(Decimal& decimal, bool behindPoint);
    void readExponent(Decimal& decimal);
    bool readInteger(int radix, double& value);
    double finish(double value, TrailingText trailing) const;

    const unsigned short* start_;
    const unsigned short* current_;
    const unsigned short* end_;
};

} // namespace KrCore
