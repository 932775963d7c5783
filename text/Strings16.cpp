#include <krcore/text/Strings16.h>

#include "text/CaseMapping.h"
#include "text/UnitSearch.h"

#include <climits>

namespace {

constexpr int noLimit = INT_MAX;
constexpr unsigned short emptyText[] = {0};

const unsigned short* orEmpty(const unsigned short* text) { return text ? text : emptyText; }

int sameUnit(unsigned short unit) { return unit; }
int upperUnit(unsigned short unit) { return KrCore::foldUpper(unit); }

/// Compares at most `count` units, each seen through `map`.
template <auto map>
int compare(const unsigned short* a, const unsigned short* b, int count) {
    a = orEmpty(a);
    b = orEmpty(b);
    for (; count > 0; --count, ++a, ++b) {
        const int difference = map(*a) - map(*b);
        if (difference != 0 || *a == 0 || *b == 0) return difference;
    }
    return 0;
}

} // namespace

extern "C" {

int strlen16(const unsigned short* text) {
    const unsigned short* const begin = orEmpty(text);
    const unsigned short* end = begin;
    while (*end != 0)
        ++end;
    return static_cast<int>(end - begin);
}

unsigned short* strcpy16(unsigned short* destination, const unsigned short* source) {
    unsigned short* target = destination;
    for (source = orEmpty(source); *source != 0; ++source)
        *target++ = *source;
    *target = 0;
    return destination;
}

int strcmp16(const unsigned short* a, const unsigned short* b) {
    return compare<sameUnit>(a, b, noLimit);
}

int strncmp16(const unsigned short* a, const unsigned short* b, int count) {
    return compare<sameUnit>(a, b, count);
}

int stricmp16(const unsigned short* a, const unsigned short* b) {
    return compare<upperUnit>(a, b, noLimit);
}

int strnicmp16(const unsigned short* a, const unsigned short* b, int count) {
    return compare<upperUnit>(a, b, count);
}

const unsigned short* strchr16(const unsigned short* text, unsigned short unit) {
    if (!text) return nullptr;
    while (*text != unit) {
        if (*text++ == 0) return nullptr;
    }
    return text;
}

const unsigned short* strstr16(const unsigned short* text, const unsigned short* needle) {
    needle = orEmpty(needle);
    if (*needle == 0 || !text) return text;
    const int found = KrCore::findText(text, strlen16(text), needle, strlen16(needle));
    return found < 0 ? nullptr : text + found;
}

const unsigned short* memchr16(const unsigned short* units, unsigned short unit, int count) {
    if (!units) return nullptr;
    for (; count > 0; --count, ++units) {
        if (*units == unit) return units;
    }
    return nullptr;
}
}
