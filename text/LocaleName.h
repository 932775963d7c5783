#pragma once

#include <krcore/text/String.h>

namespace KrCore {

/// The form in which the library names locales: language in lower case and country in upper case,
/// "en_US". A language alone gets its usual country; some languages know one country only.
String normalizedLocale(String name);

} // namespace KrCore
