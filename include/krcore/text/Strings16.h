#pragma once

#include <krcore/foundation/Export.h>

/// @file
/// Plain functions over 0-terminated text of 16-bit units. A null pointer is the empty text, except
/// as the destination of `strcpy16`. Comparisons give the difference of the first differing units;
/// the forms with an `i` map both sides with `KrCore::UnicodeUtils::towupper` first, the forms with
/// an `n` look at `count` units at most and give 0 for a count below 1.

extern "C" {

/// The units before the terminator.
KR_API int strlen16(const unsigned short* text);
/// Copies the terminator too and returns `destination`. The two must not overlap.
KR_API unsigned short* strcpy16(unsigned short* destination, const unsigned short* source);

KR_API int strcmp16(const unsigned short* a, const unsigned short* b);
KR_API int strncmp16(const unsigned short* a, const unsigned short* b, int count);
KR_API int stricmp16(const unsigned short* a, const unsigned short* b);
KR_API int strnicmp16(const unsigned short* a, const unsigned short* b, int count);

/// The first `unit` in `text`, or null. As in C, unit 0 finds the terminator.
KR_API const unsigned short* strchr16(const unsigned short* text, unsigned short unit);
/// The first `needle` in `text`, or null. An empty needle is found at the start of any text.
KR_API const unsigned short* strstr16(const unsigned short* text, const unsigned short* needle);
/// The first `unit` within `count` units, terminators included, or null.
KR_API const unsigned short* memchr16(const unsigned short* units, unsigned short unit, int count);
}
