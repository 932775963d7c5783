#include "platform/Locale.h"

#include <windows.h>

namespace KrCore::Platform {

namespace {

template <int size>
bool readName(LCTYPE kind, char (&name)[size]) {
    if (GetLocaleInfoA(LOCALE_USER_DEFAULT, kind, name, size) > 0) return true;
    name[0] = 0;
    return false;
}

} // namespace

bool readUserLocale(UserLocale& locale) {
    readName(LOCALE_SISO3166CTRYNAME, locale.country);
    return readName(LOCALE_SISO639LANGNAME, locale.language);
}

} // namespace KrCore::Platform
