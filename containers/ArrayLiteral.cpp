#include <krcore/containers/Array.h>
#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <algorithm>
#include <utility>

namespace KrCore {

namespace {

constexpr int maxLiteralDepth = 512;
constexpr unsigned short endOfText = 0;

/// Reads one literal. Each reading member leaves the position behind what it read, and false ends
/// it all.
class LiteralReader {
public:
    LiteralReader(const String& text, int position) : text_(text), position_(position) {}

    bool readLiteral(Array& array) {
        skipBlanks();
        if (!readArray(array, 1)) return false;
        skipBlanks();
        return position_ == text_.length();
    }

private:
    bool isAtEnd() const { return position_ >= text_.length(); }
    /// A zero unit at the end, which no literal has outside its texts.
    unsigned short current() const { return isAtEnd() ? endOfText : text_.wstr()[position_]; }
    void skipBlanks() {
        while (!isAtEnd() && current() <= ' ') {
            ++position_;
        }
    }
    bool take(char expected) {
        skipBlanks();
        if (isAtEnd() || current() != static_cast<unsigned char>(expected)) return false;
        ++position_;
        return true;
    }

    bool readArray(Array& array, int depth) {
        if (depth > maxLiteralDepth || !take('[')) return false;
        while (!take(']')) {
            if (take(',')) {
                array.setLength(array.length() + 1);
                continue;
            }
            if (!readValue(array, depth)) return false;
            if (take(']')) return true;
            if (!take(',')) return false;
        }
        return true;
    }

    /// Appends the value at the position to `array`.
    bool readValue(Array& array, int depth) {
        switch (current()) {
        case '[': {
            Array nested;
            if (!readArray(nested, depth + 1)) return false;
            array += Variant(nested);
            return true;
        }
        case '"':
        case '\'': {
            String quoted;
            if (!text_.parse(quoted, position_)) return false;
            array += quoted;
            return true;
        }
        default:
            return readWord(array);
        }
    }

    bool readWord(Array& array) {
        const int start = position_;
        while (!isAtEnd() && current() != ',' && current() != ']') {
            ++position_;
        }
        String word = text_.substr(start, position_ - start);
        word.strip();
        Variant value;
        if (!convertWord(word, value)) return false;
        array += value;
        return true;
    }

    static bool convertWord(const String& word, Variant& value) {
        if (word == "undefined") return true;
        if (word == "null") {
            value.setNull();
        } else if (word == "true" || word == "false") {
            value.setBool(word == "true");
        } else {
            value.setDouble(Variant::scanDouble(word, 0));
            return word == "NaN" || !value.isNaN();
        }
        return true;
    }

    const String& text_;
    int position_;
};

} // namespace

bool Array::parse(const String& text, int position) {
    const String literal(text); // The text may lie within this array.
    Array result;
    LiteralReader reader(literal, std::clamp(position, 0, literal.length()));
    if (!reader.readLiteral(result)) return false;
    *this = std::move(result);
    return true;
}

} // namespace KrCore
