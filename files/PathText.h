#pragma once

#include <krcore/text/String.h>

namespace KrCore::PathText {

// Platform paths as text. Nothing here asks the system.

inline bool isSeparator(unsigned short unit) { return unit == '\\' || unit == '/'; }
inline bool isLetter(unsigned short unit) {
    const int lower = unit | 0x20;
    return unit < 0x80 && lower >= 'a' && lower <= 'z';
}
/// "X:" in front, alone or with a separator behind it.
bool hasDrive(const unsigned short* path, int length);

/// Units of what an absolute path begins with: `C:\`, `\\`, `\`, with `\\?\` in front or without. 0
/// for a relative path.
int rootLength(const String& path);
inline bool isAbsolute(const String& path) { return rootLength(path) > 0; }

/// Every "/" as "\". A path that begins with `\\?\` stays as it is: nothing in it has a meaning but
/// "\".
String withBackslashes(const String& path);

String join(const String& folder, const String& name);

/// The path without "." and ".." segments and doubled separators. What climbs above the root stays
/// at the root (`\\`, where a server's name would stand, is one); a relative path that climbs above
/// its beginning keeps the "..".
String folded(const String& path);

/// An absolute path: `path` itself, or `path` in `folder`, folded.
String resolved(const String& path, const String& folder);

/// What stands behind the last "\".
String lastName(const String& path);
/// The same without the `.LNK` of a shortcut.
String nameOf(const String& path);
/// What stands behind the last "." of the name; empty when there is none.
String extensionOf(const String& path);
/// The path of the folder around it. Kept: a name in the root of no drive (`\x`) has the parent "",
/// and a path without "\" is its own parent; whoever walks up stops there (held by
/// FilePath.FindsTheParent).
String parentOf(const String& path);
/// The drive or server that the path lies on, without a separator at its end: `C:`,
/// `\\server\share`, or `\` where there are no drives. Empty for a relative path.
String rootNameOf(const String& path);

/// Whether the path ends in `.LNK`, in any case, with something in front of it.
bool hasShortcutSuffix(const String& path);
inline constexpr char shortcutSuffix[] = ".LNK";

} // namespace KrCore::PathText
