// Conversion of line ends.

#include <krcore/text/String.h>

#include "text/StringBuffer.h"
#include "text/Units.h"

#include <algorithm>

namespace KrCore {

namespace {

struct LineEnd {
    const char* text;
    int length;
};

LineEnd lineEndOf(CRLFEncoding kind) {
    switch (kind) {
    case CRLFEncoding::CR:
        return {"\r", 1};
    case CRLFEncoding::LF:
        return {"\n", 1};
    case CRLFEncoding::Default:
    case CRLFEncoding::CRLF:
        break;
    }
    return {"\r\n", 2};
}

bool startsLineEnd(unsigned short unit) { return unit == '\r' || unit == '\n'; }

/// The length of the line end at `at`, 1 or 2.
int lineEndLength(const unsigned short* at, const unsigned short* end) {
    return end - at > 1 && at[0] == '\r' && at[1] == '\n' ? 2 : 1;
}

struct LineEndCounts {
    int all = 0;
    int wanted = 0;
    int units = 0;
};

LineEndCounts countLineEnds(const String& text, LineEnd wanted) {
    LineEndCounts counts;
    for (const unsigned short* at = text.begin(); at != text.end();) {
        if (!startsLineEnd(*at)) {
            ++at;
            continue;
        }
        const int length = lineEndLength(at, text.end());
        ++counts.all;
        counts.units += length;
        counts.wanted += length == wanted.length && *at == wanted.text[0];
        at += length;
    }
    return counts;
}

} // namespace

int String::convertLF(CRLFEncoding kind) {
    const LineEnd wanted = lineEndOf(kind);
    const LineEndCounts counts = countLineEnds(*this, wanted);
    if (counts.wanted == counts.all) return counts.all;

    String converted;
    converted.init(StringBuffer::checkedLength(std::int64_t(length()) - counts.units +
                                               std::int64_t(counts.all) * wanted.length));
    unsigned short* out = StringBuffer::of(converted)->units();
    for (const unsigned short* at = begin(); at != end();) {
        const unsigned short* lineEnd = std::find_if(at, end(), startsLineEnd);
        out = std::copy(at, lineEnd, out);
        if (lineEnd == end()) break;
        out = std::copy_n(wanted.text, wanted.length, out);
        at = lineEnd + lineEndLength(lineEnd, end());
    }
    StringBuffer::replaceContents(*this, std::move(converted));
    return counts.all;
}

} // namespace KrCore
