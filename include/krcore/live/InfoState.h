#pragma once

namespace KrCore {

/// What sort of thing a class or service is. The library gives these two a meaning; a host's
/// records may report other values of its own, which are passed on and treated like `Ordinary`.
enum class InfoState : int {
    Ordinary = 1,
    Enumeration = 6, ///< A class whose members are constants; a constant, which is read-only.
};

} // namespace KrCore
