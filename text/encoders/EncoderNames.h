#pragma once

#include <krcore/text/String.h>

namespace KrCore {

/// A name as the registry compares it: in upper case, "-" for "_", without a leading "X-".
String normalizedEncoderName(const String& name);

/// The code page that a normalised name says in digits ("CP1251", "WINDOWS-1251"), or -1. Leading
/// zeros do not matter; no page has a number above 65535.
int codePageNumber(const String& name);

} // namespace KrCore
