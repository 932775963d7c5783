#pragma once

#include <krcore/text/String.h>

namespace KrCore::PathUri {

// Between platform paths and the URI form that scripts see: `D:\a b` is "/d/a%20b", `\\server\x` is
// "//server/x", and "~" is the home folder. Nothing here asks the system.

/// What a URI keeps besides letters and digits.
inline constexpr char keptUnits[] = "-_.!~*'();/?:@&=+$,#";

/// The URI form; with a `home` the home folder becomes "~". Empty for a path with a lone surrogate,
/// which no URI can hold.
///
/// Kept: `.LNK` goes before separators at the end do, so `a.LNK\` keeps it; the home folder is
/// compared without regard to case; and `C:a` gives "/ca", from which no way leads back (held by
/// FileUri.WritesPaths).
String fromPath(const String& path, const String* home);

/// The platform path of a URI or of a path as a script writes it; relative ones are in
/// `currentFolder`. "file://" may stand in front. False, with `path` untouched, when an escape
/// makes a separator or U+0000 in a name, as no name can hold these, and for "~" without a home.
///
/// A "/" and one letter is a drive, as is a letter with ":"; "\" separates like "/"; "." and ".."
/// are folded; escapes that make no UTF-8 stand for themselves. An empty text is an empty path.
bool toPath(const String& uri, const String& currentFolder, const String& home, String& path);

/// How to get from the folder `base` to `target`, both platform paths: "../b/c"; "." when they are
/// the same. Segments are compared exactly, as not every file system ignores case; a path that is
/// longer than it has to be still leads there. With nothing in common, the absolute URI;
/// empty for a target that has none or is empty itself.
String relative(const String& target, const String& base);

} // namespace KrCore::PathUri
