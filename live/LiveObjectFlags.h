#pragma once

namespace KrCore {

/// Bits of `LiveObject`'s flag word.
namespace ObjectFlag {
inline constexpr unsigned Dynamic = 0x1;           ///< Takes new properties by name.
inline constexpr unsigned HasOperators = 0x800000; ///< Known to have operators.
inline constexpr unsigned ClearedByReset = 0xFFFFFC;
} // namespace ObjectFlag

} // namespace KrCore
