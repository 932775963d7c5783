// Appending, inserting, cutting and splitting.

#include <krcore/text/String.h>

#include "text/StringBuffer.h"
#include "text/TextArgument.h"
#include "text/Units.h"

#include <algorithm>

namespace KrCore {

// ---- Concatenation ----

void String::append(const String& text) { append(text.wstr(), text.length()); }

void String::appendToFullBuffer(unsigned short ch) {
    const int end = length();
    adjust(StringBuffer::checkedLength(std::int64_t(end) + 1));
    buffer_->units()[end] = ch;
}

void String::append(const char* text, int length) {
    if (!text) return;
    const int count = length < 0 ? countBytes(text, INT_MAX) : length;
    if (count == 0) return;
    const int end = buffer_->length;
    adjust(StringBuffer::checkedLength(std::int64_t(end) + count));
    widenBytes(buffer_->units() + end, text, count);
}

void String::append(const unsigned short* text, int length) {
    if (!text) return;
    const int count = length < 0 ? countUnits(text, INT_MAX) : length;
    if (count == 0) return;
    // A part of this string keeps its place in the buffer, wherever the buffer goes.
    const bool isOwn = StringBuffer::contains(*this, text);
    const auto offset = isOwn ? text - wstr() : 0;
    const int end = buffer_->length;
    adjust(StringBuffer::checkedLength(std::int64_t(end) + count));
    copyUnits(buffer_->units() + end, isOwn ? buffer_->units() + offset : text, count);
}

String& String::operator+=(const String& text) {
    append(text);
    return *this;
}

String& String::operator+=(char ch) {
    append(ch);
    return *this;
}

String& String::operator+=(unsigned short ch) {
    append(ch);
    return *this;
}

String& String::operator+=(const char* text) {
    append(text);
    return *this;
}

String& String::operator+=(const unsigned short* text) {
    append(text);
    return *this;
}

namespace {

/// Two runs in one buffer of the right size.
String concatenation(const String& left, const unsigned short* right, int count) {
    String result;
    result.init(StringBuffer::checkedLength(std::int64_t(left.length()) + count));
    if (result.isEmpty()) return result;
    unsigned short* units = StringBuffer::of(result)->units();
    copyUnits(units, left.wstr(), left.length());
    copyUnits(units + left.length(), right, count);
    return result;
}

} // namespace

String String::operator+(const String& text) const {
    return concatenation(*this, text.wstr(), text.length());
}

String String::operator+(char ch) const { return *this + widened(ch); }

String String::operator+(unsigned short ch) const { return concatenation(*this, &ch, 1); }

String String::operator+(const char* text) const {
    const TextArgument right(text);
    return concatenation(*this, right.units(), right.length());
}

String String::operator+(const unsigned short* text) const {
    const TextArgument right(text);
    return concatenation(*this, right.units(), right.length());
}

// ---- Inserting and cutting ----

void StringBuffer::splice(String& text, int start, int removed, const unsigned short* inserted,
                          int count) {
    const int oldLength = text.length();
    const int newLength = checkedLength(std::int64_t(oldLength) - removed + count);
    if (newLength == 0) return text.erase();
    if (newLength > oldLength) {
        text.adjust(newLength);
    } else {
        text.unique();
    }
    unsigned short* place = text.buffer_->units() + start;
    moveUnits(place + count, place + removed, oldLength - start - removed);
    if (count > 0) copyUnits(place, inserted, count);
    if (newLength < oldLength) text.adjust(newLength);
}

namespace {

void insertText(String& target, TextArgument text, int pos) {
    if (text.length() == 0) return;
    text.keepFrom(target);
    const int position = std::clamp(pos, 0, target.length());
    StringBuffer::splice(target, position, 0, text.units(), text.length());
}

} // namespace

void String::insert(const String& text, int pos) { insertText(*this, TextArgument(text), pos); }

void String::insert(unsigned short ch, int pos) {
    insertText(*this, TextArgument(&ch, SingleUnit()), pos);
}

void String::insert(const char* text, int pos) { insertText(*this, TextArgument(text), pos); }

void String::insert(const unsigned short* text, int pos) {
    insertText(*this, TextArgument(text), pos);
}

void String::erase(int start, int count) {
    const int size = length();
    if (start < 0 || start >= size) return;
    if (count < 0 || count > size - start) count = size - start;
    if (count > 0) StringBuffer::splice(*this, start, count, nullptr, 0);
}

String String::substr(int start, int count) const {
    const int size = length();
    start = std::max(start, 0);
    if (start >= size) return {};
    if (count < 0 || count > size - start) count = size - start;
    if (count == size) return *this;
    return String(wstr() + start, count);
}

namespace {

struct Range {
    int start;
    int end;
};

bool isBlank(unsigned short unit) { return unit <= 32; }

/// What is left of the range without the blanks at its ends.
Range withoutBlanks(const unsigned short* units, Range range) {
    while (range.start < range.end && isBlank(units[range.start])) {
        ++range.start;
    }
    while (range.start < range.end && isBlank(units[range.end - 1])) {
        --range.end;
    }
    return range;
}

/// Takes the first `fieldLength` units and `separatorLength` more off the front.
String takeField(String& text, int fieldLength, int separatorLength) {
    const Range field = withoutBlanks(text.wstr(), {0, fieldLength});
    String result = text.substr(field.start, field.end - field.start);
    text.erase(0, fieldLength + separatorLength);
    return result;
}

String splitAt(String& text, const TextArgument& separator) {
    // An empty separator would be found at once for ever.
    const int found = separator.length() == 0 ? -1 : findForward(text, separator, 0);
    if (found < 0) return takeField(text, text.length(), 0);
    return takeField(text, found, separator.length());
}

} // namespace

void String::strip() {
    const Range rest = withoutBlanks(wstr(), {0, length()});
    if (rest.end - rest.start == length()) return;
    erase(rest.end);
    erase(0, rest.start);
}

String String::split(const String& separator) { return splitAt(*this, TextArgument(separator)); }

String String::split(unsigned short separator) {
    return splitAt(*this, TextArgument(&separator, SingleUnit()));
}

String String::split(const char* separator) { return splitAt(*this, TextArgument(separator)); }

String String::split(const unsigned short* separator) {
    return splitAt(*this, TextArgument(separator));
}

} // namespace KrCore
