// Replacing text by text.

#include <krcore/text/String.h>

#include "text/StringBuffer.h"
#include "text/TextArgument.h"

namespace KrCore {

namespace {

int replaceFirst(String& target, const TextArgument& what, TextArgument with, int start) {
    const int found = findForward(target, what, start);
    if (found < 0) return -1;
    with.keepFrom(target);
    StringBuffer::splice(target, found, what.length(), with.units(), with.length());
    return found;
}

/// Matches that are as long as what replaces them are overwritten in place.
int overwriteAll(String& target, TextArgument& what, TextArgument& with, int first) {
    what.keepFrom(target);
    with.keepFrom(target);
    unsigned short* units = target.writable();
    int count = 0;
    for (int at = first; at >= 0; at = findForward(target, what, at + with.length())) {
        copyUnits(units + at, with.units(), with.length());
        ++count;
    }
    return count;
}

int countMatches(const String& target, const TextArgument& what, int first) {
    int count = 0;
    for (int at = first; at >= 0; at = findForward(target, what, at + what.length())) {
        ++count;
    }
    return count;
}

/// Other matches are counted first, so that the new text is made at once and in its final size.
int rebuildAll(String& target, const TextArgument& what, const TextArgument& with, int first) {
    const int count = countMatches(target, what, first);
    const std::int64_t growth = std::int64_t(with.length()) - what.length();
    String result;
    result.init(StringBuffer::checkedLength(target.length() + count * growth));
    unsigned short* out = StringBuffer::of(result)->units();
    const unsigned short* const units = target.wstr();
    int from = 0;
    for (int at = first; at >= 0; at = findForward(target, what, from)) {
        copyUnits(out, units + from, at - from);
        out += at - from;
        if (with.length() > 0) copyUnits(out, with.units(), with.length());
        out += with.length();
        from = at + what.length();
    }
    if (from < target.length()) copyUnits(out, units + from, target.length() - from);
    StringBuffer::replaceContents(target, std::move(result));
    return count;
}

int replaceEvery(String& target, TextArgument what, TextArgument with, int start) {
    if (what.length() == 0) return 0;
    const int first = findForward(target, what, start);
    if (first < 0) return 0;
    return what.length() == with.length() ? overwriteAll(target, what, with, first)
                                          : rebuildAll(target, what, with, first);
}

} // namespace

int String::replace(unsigned short what, unsigned short with, int start) {
    return replaceFirst(*this, TextArgument(&what, SingleUnit()), TextArgument(&with, SingleUnit()),
                        start);
}

int String::replaceAll(unsigned short what, unsigned short with, int start) {
    return replaceEvery(*this, TextArgument(&what, SingleUnit()), TextArgument(&with, SingleUnit()),
                        start);
}

// Every pairing of the three forms of text.

int String::replace(const String& what, const String& with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const String& what, const char* with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const String& what, const unsigned short* with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const char* what, const String& with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const char* what, const char* with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const char* what, const unsigned short* with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const unsigned short* what, const String& with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const unsigned short* what, const char* with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}
int String::replace(const unsigned short* what, const unsigned short* with, int start) {
    return replaceFirst(*this, TextArgument(what), TextArgument(with), start);
}

int String::replaceAll(const String& what, const String& with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const String& what, const char* with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const String& what, const unsigned short* with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const char* what, const String& with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const char* what, const char* with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const char* what, const unsigned short* with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const unsigned short* what, const String& with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const unsigned short* what, const char* with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}
int String::replaceAll(const unsigned short* what, const unsigned short* with, int start) {
    return replaceEvery(*this, TextArgument(what), TextArgument(with), start);
}

} // namespace KrCore
