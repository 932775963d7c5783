#pragma once

#include <cstdint>
#include <span>

namespace KrCore::Platform {

/// Paths are absolute and have the form that they have on Windows: `C:\name`,
/// `\\server\share\name`, and `\name` for the root where there are no drives. Elsewhere that is
/// mapped here: `\home\u` is "/home/u" and `c:\a` is "/c/a". A path that stands for nothing on this
/// system is `FileFault::Invalid`, never another file.
///
/// Names are UTF-8 on other systems. Bytes of a name that are none, "\" and what else could not be
/// told apart come as U+DC00 plus the byte, and go back the same way, so that every name survives.
using PathUnits = std::span<const unsigned short>;

/// Why the system refused.
enum class FileFault {
    None,
    NotFound,
    Exists,
    Denied,
    NotEmpty,
    Invalid, ///< The path names nothing on this system.
    Failed,  ///< Anything else: the medium, the network, no space.
};

/// Takes text from the system. May throw; the system's own objects are given back then.
class TextSink {
public:
    virtual void take(std::span<const unsigned short> units) = 0;

protected:
    ~TextSink() = default;
};

/// Attributes of a file; the values are those of Windows.
enum FileAttributeBits : int {
    attributeReadOnly = 0x1,
    attributeHidden = 0x2,
    attributeSystem = 0x4,
    attributeFolder = 0x10,
    attributeArchive = 0x20,
    attributeAlias = 0x400,
};
/// Those that `setFileAttributes` can change.
extern const int settableAttributes;

/// What there is at a path.
struct FileFacts {
    int attributes = 0;  ///< Of what a link leads to, with `attributeAlias` for the link itself.
    bool isFile = false; ///< A regular file. Neither this nor a folder: a device, a broken link.
    bool isFolder = false;
    std::int64_t byteCount = 0; ///< Of a file.
};

FileFault readFileFacts(PathUnits path, FileFacts& facts);
FileFault setFileAttributes(PathUnits path, int attributes);

FileFault createFolder(PathUnits path);
/// Removes a file, an empty folder, or a link without what it leads to.
FileFault removeEntry(PathUnits path);
/// Never takes the place of another file.
FileFault renameEntry(PathUnits from, PathUnits to);
/// Replaces a file at `to`, which stays as it was when the copy fails. Nothing happens when both
/// are the same file.
FileFault copyFile(PathUnits from, PathUnits to);
/// Gives the names in a folder, in no order, without "." and "..".
FileFault listFolder(PathUnits path, TextSink& names);
/// Opens a file or a folder as if the user had asked the system for it.
FileFault executeFile(PathUnits path);

/// Whether a shortcut is known by its suffix.
extern const bool shortcutsNeedSuffix;
/// Whether there is a shortcut at this very path: a `.LNK` file of the shell on Windows, a symbolic
/// link elsewhere.
bool isShortcut(PathUnits path);
/// Where the shortcut leads, one step.
FileFault readShortcut(PathUnits path, TextSink& target);
FileFault createShortcut(PathUnits path, PathUnits target);

/// Whether a path that begins with one "\" lacks its drive.
extern const bool rootsAreDrives;
/// A path as the system's own programs get it, in bytes.
void readNarrowPath(const char* bytes, TextSink& path);
/// An environment variable that holds a path; false when it is unset or empty.
bool readEnvironmentPath(const char* name, TextSink& path);
/// The current folder of the process.
bool readWorkingFolder(TextSink& path);
/// The folder of the running program.
bool readProgramFolder(TextSink& path);

enum class ShellFolder {
    Desktop,
    Documents,
    UserData,
    CommonData,
    ProgramFiles,
    ProgramFilesX86,
    CommonFiles,
    CommonFilesX86,
    Temporary, ///< What serves when the environment names none.
    Profile,
};
/// False when the system has no such folder.
bool readShellFolder(ShellFolder folder, TextSink& path);

/// "Windows" or the like: how scripts tell the systems apart.
const char* fileSystemName();
/// The line end of the system's own text files.
bool usesCarriageReturns();

} // namespace KrCore::Platform
