#include "hosts/ReplacementText.h"

#include "hosts/MatchSearch.h"

namespace krhost::ReplacementText {

using namespace KrCore;

namespace {

bool isDigit(unsigned short unit) { return unit >= '0' && unit <= '9'; }

/// The number of a group in two digits or else in one; `length` is theirs. 0 when there is no such
/// group.
int groupAt(const unsigned short* units, int groupCount, int& length) {
    int number = 0;
    int found = 0;
    for (int i = 0; i < 2 && isDigit(units[i]); ++i) {
        number = number * 10 + (units[i] - '0');
        if (number == 0 || number >= groupCount) continue;
        found = number;
        length = i + 1;
    }
    return found;
}

/// Appends what stands for the units behind a "$" and returns how many they are; 0 for none.
int appendFilledIn(String& text, const unsigned short* units, const MatchSearch& search) {
    const Capture& whole = search.capture(0);
    switch (units[0]) {
    case '$':
        text.append('$');
        return 1;
    case '&':
        search.appendGroup(text, 0);
        return 1;
    case '`':
        search.appendRange(text, 0, whole.start);
        return 1;
    case '\'':
        search.appendRange(text, whole.end, search.subject().length());
        return 1;
    default:
        break;
    }
    int length = 0;
    if (const int group = groupAt(units, search.groupCount(), length); group > 0)
        search.appendGroup(text, group);
    return length;
}

} // namespace

void append(String& text, const String& replacement, const MatchSearch& search) {
    const unsigned short* units = replacement.wstr();
    for (int i = 0; i < replacement.length(); ++i) {
        // A terminating 0 stands behind the last unit.
        const int length = units[i] == '$' ? appendFilledIn(text, units + i + 1, search) : 0;
        if (length == 0) text.append(units[i]);
        i += length;
    }
}

} // namespace krhost::ReplacementText
