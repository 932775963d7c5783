#pragma once

namespace KrCore {

/// Flags of one property, whether a row of a class's table or a dynamic record of one object. The
/// low four bits are its `InfoType`.
namespace PropertyFlag {
inline constexpr int KindMask = 0xF;
inline constexpr int ListAsReadOnly =
    0x10;                              ///< Records: listed under `RequestFlag::ReadOnly` instead
                                       ///< of `RequestFlag::ReadWrite`, whatever the kind.
inline constexpr int Hidden = 0x20;    ///< Listed only under `RequestFlag::WithHidden`.
inline constexpr int Permanent = 0x40; ///< Records: cannot be deleted one by one.
inline constexpr int Internal = 0x80;  ///< Rows: listed only under `RequestFlag::WithInternal`.
inline constexpr int LanguageMask = 0xFF0000;   ///< Rows: the languages that see it; 0 means all.
inline constexpr int WriteOnce = 0x200000;      ///< Records: one write is still allowed.
inline constexpr int KeptByListener = 0x400000; ///< Records: listeners hold the value.
} // namespace PropertyFlag

/// Flags of a look-up or enumeration, beside the requesting language in the bits of
/// `PropertyFlag::LanguageMask`.
namespace RequestFlag {
inline constexpr int Library = 0x10000;    ///< The language of every look-up the library makes.
inline constexpr int IgnoreCase = 0x40000; ///< The language that compares names without case.
inline constexpr int ClassLevel = 1 << 24; ///< Class-level (static) members.
inline constexpr int WithHidden = 1 << 27;
inline constexpr int WithInternal = 1 << 28;
inline constexpr int ReadWrite = 1 << 29;                   ///< List read/write properties.
inline constexpr int ReadOnly = 1 << 30;                    ///< List read-only properties.
inline constexpr int Methods = static_cast<int>(1U << 31U); ///< List methods.
} // namespace RequestFlag

} // namespace KrCore
