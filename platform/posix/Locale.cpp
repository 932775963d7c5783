#include "platform/Locale.h"

#include <cstdlib>
#include <string_view>

namespace KrCore::Platform {

namespace {

/// The name that decides about messages, as in "de_DE.UTF-8@euro". Read from the environment:
/// asking the C library would need a call of setlocale, which is the host's to make.
std::string_view messageLocale() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value && *value) return value;
    }
    return {};
}

template <std::size_t size>
bool store(std::string_view text, char (&name)[size]) {
    const bool fits = text.size() < size;
    name[fits ? text.copy(name, size) : 0] = 0;
    return fits;
}

} // namespace

bool readUserLocale(UserLocale& locale) {
    std::string_view name = messageLocale();
    name = name.substr(0, name.find_first_of(".@"));
    const std::size_t languageEnd = name.find('_');
    const std::string_view language = name.substr(0, languageEnd);
    const bool hasCountry = languageEnd != std::string_view::npos;
    store(hasCountry ? name.substr(languageEnd + 1) : std::string_view(), locale.country);
    // "C" and "POSIX" name no language.
    if (language.empty() || name == "C" || name == "POSIX") return false;
    return store(language, locale.language);
}

} // namespace KrCore::Platform
