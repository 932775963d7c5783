#pragma once

namespace KrCore::Platform {

/// The user's language and country as the system names them, mostly two-letter codes; 0-terminated.
struct UserLocale {
    char language[16];
    char country[16]; ///< Empty when the system does not tell.
};

/// False when the system does not tell the language.
bool readUserLocale(UserLocale& locale);

} // namespace KrCore::Platform
