#pragma once

namespace KrCore {

/// Attributes of a file or folder, as `FileSpec::getAttributes` gives them. The values are those of
/// Windows.
namespace FileAttribute {
enum Value : int {
    ReadOnly = 0x1, ///< Elsewhere than on Windows: nobody may write to it.
    Hidden = 0x2,   ///< Elsewhere: the name begins with ".".
    System = 0x4,   ///< Windows only.
    Folder = 0x10,
    Archive = 0x20, ///< Windows only.
    Link = 0x400,   ///< A link of the file system; the other attributes are those of its target.
};
} // namespace FileAttribute

} // namespace KrCore
