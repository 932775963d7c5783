#include "text/TextPairs.h"

#include <krcore/text/String.h>

namespace KrCore {

namespace {

struct TextPair {
    unsigned short second;
    unsigned short result;
};

constexpr TextPair backslashPairs[] = {{'n', 0x000A}, {'r', 0x000D}, {'t', 0x0009}, {'b', 0x0008}};

// Kept: ^A is an apostrophe, and both ^V and ^l are a backslash; texts in the field rely on it.
// Held by Localizer.ReplacesPairs.
constexpr TextPair caretPairs[] = {
    {'!', 0x00AC}, {'#', 0x2318}, {'A', 0x0027}, {'B', 0x2022}, {'C', 0x00A9},
    {'D', 0x00B0}, {'E', 0x00EA}, {'F', 0x002F}, {'I', 0x2206}, {'Q', 0x0022},
    {'R', 0x00AE}, {'S', 0x2211}, {'T', 0x2122}, {'V', 0x005C}, {'b', 0x007C},
    {'e', 0x00E9}, {'l', 0x005C}, {'n', 0x000A}, {'r', 0x000D}, {'t', 0x0009},
    {'^', 0x005E}, {'[', 0x201C}, {']', 0x201D}, {'{', 0x2018}, {'}', 0x2019}};

template <int count>
const TextPair* findPair(const TextPair (&pairs)[count], unsigned short second) {
    for (const TextPair& pair : pairs) {
        if (pair.second == second) return &pair;
    }
    return nullptr;
}

/// Writes what the pair that begins at `source` stands for and returns where the next unit goes.
unsigned short* writePair(const unsigned short* source, unsigned short* target) {
    const bool isCaret = source[0] == '^';
    const TextPair* pair =
        isCaret ? findPair(caretPairs, source[1]) : findPair(backslashPairs, source[1]);
    const unsigned short second = source[1];
    if (!pair && isCaret) *target++ = '^';
    *target++ = pair ? pair->result : second;
    return target;
}

} // namespace

void replaceTextPairs(String& text) {
    if (text.findAny("\\^") < 0) return;
    // In place: no pair stands for more than it is made of.
    unsigned short* const begin = text.writable();
    const unsigned short* source = begin;
    const unsigned short* const end = begin + text.length();
    unsigned short* target = begin;
    while (source < end) {
        const bool isPair = (*source == '\\' || *source == '^') && source + 1 < end;
        if (isPair) {
            target = writePair(source, target);
            source += 2;
        } else {
            *target++ = *source++;
        }
    }
    text.adjust(static_cast<int>(target - begin));
}

} // namespace KrCore
