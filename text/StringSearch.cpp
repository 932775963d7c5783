// Finding units and texts. The search itself is UnitSearch's.

#include <krcore/text/String.h>

#include "text/TextArgument.h"
#include "text/UnitSearch.h"

#include <algorithm>
#include <bitset>

namespace KrCore {

int findForward(const String& text, const TextArgument& needle, int start) {
    start = std::max(start, 0);
    if (start > text.length() - needle.length()) return -1;
    if (needle.length() == 0) return start;
    const int found =
        findText(text.wstr() + start, text.length() - start, needle.units(), needle.length());
    return found < 0 ? -1 : start + found;
}

namespace {

int findBackward(const String& text, const TextArgument& needle, int start) {
    int candidate = text.length() - needle.length();
    if (candidate < 0) return -1;
    if (start >= 0) candidate = std::min(candidate, start);
    if (needle.length() == 0) return candidate;
    return findLastText(text.wstr(), candidate + needle.length(), needle.units(), needle.length());
}

int findIn(const String& text, const TextArgument& needle, int start, bool reverse) {
    return reverse ? findBackward(text, needle, start) : findForward(text, needle, start);
}

/// Small sets are compared unit by unit, larger ones become a table of all units.
int findAnyOf(const String& text, const TextArgument& set, int start) {
    constexpr int smallSet = 8;
    const unsigned short* const units = text.wstr();
    const unsigned short* const end = text.end();
    const unsigned short* from = units + std::clamp(start, 0, text.length());
    const unsigned short* found;
    if (set.length() <= smallSet) {
        found = std::find_first_of(from, end, set.units(), set.units() + set.length());
    } else {
        std::bitset<65536> members;
        for (int i = 0; i < set.length(); ++i) {
            members.set(set.units()[i]);
        }
        found = std::find_if(from, end, [&](unsigned short unit) { return members[unit]; });
    }
    return found == end ? -1 : static_cast<int>(found - units);
}

} // namespace

int String::find(const String& text, int start, bool reverse) const {
    return findIn(*this, TextArgument(text), start, reverse);
}

int String::find(unsigned short ch, int start, bool reverse) const {
    return findIn(*this, TextArgument(&ch, SingleUnit()), start, reverse);
}

int String::find(const char* text, int start, bool reverse) const {
    return findIn(*this, TextArgument(text), start, reverse);
}

int String::find(const unsigned short* text, int start, bool reverse) const {
    return findIn(*this, TextArgument(text), start, reverse);
}

int String::findAny(const String& set, int start) const {
    return findAnyOf(*this, TextArgument(set), start);
}

int String::findAny(const char* set, int start) const {
    return findAnyOf(*this, TextArgument(set), start);
}

int String::findAny(const unsigned short* set, int start) const {
    return findAnyOf(*this, TextArgument(set), start);
}

} // namespace KrCore
