#pragma once

#include <krcore/live/PropertyFlags.h>

namespace KrCore {

/// The languages that a request or row names; the library's own when it names none.
constexpr int languageOf(int flags) {
    const int languages = flags & PropertyFlag::LanguageMask;
    return languages ? languages : RequestFlag::Library;
}

} // namespace KrCore
