#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>
#include <krcore/text/String.h>

#include <compare>

namespace KrCore {

class Array;
class FileFilter;
struct FileSpecData;

/// Names a file or folder, whether or not there is one.
///
/// It holds the *platform path*, in the form of Windows on every system: "\" between names,
/// `C:\name` or `\\server\share\name`. Elsewhere `\home\u` is "/home/u" and `C:\a` is "/c/a"; a
/// server's path names nothing there. In names that no UTF-8 makes, U+DC00 plus a byte stands for
/// the byte.
///
/// Scripts see the *URI form*: "/c/dir/a%20name", "//server/share", "~/name" in the home folder.
///
/// A relative path is in the current folder of the calling thread's context
/// (`FileUtils::setCurrentDir`), which the first question makes that of the process. ".." in a path
/// takes back the name in front of it, wherever that leads.
///
/// A value: copies are independent. One spec is used by one thread at a time. Results that are
/// `int` are error codes, 0 for success; questions about a path that names nothing are answered
/// with false.
class KR_API FileSpec : public Heap {
public:
    FileSpec();
    /// A path in URI form, or with `isNative` a platform path; empty when `setPath` refuses it.
    explicit FileSpec(const String& path, bool isNative = false);
    /// The platform name or path `name` inside a folder.
    FileSpec(const FileSpec& folder, const String& name);
    FileSpec(const FileSpec& other);
    FileSpec(FileSpec&& other) noexcept : data_(other.data_) { other.data_ = nullptr; }
    ~FileSpec();
    FileSpec& operator=(const FileSpec& other);
    FileSpec& operator=(FileSpec&& other) noexcept;

    /// By the platform paths, unit by unit.
    bool operator==(const FileSpec& other) const;
    std::strong_ordering operator<=>(const FileSpec& other) const;

    /// @name The path
    /// @{
    /// Takes a URI, with or without "file://", or with `isNative` a platform path.
    ///
    /// As a URI: relative ones are in the current folder; "/c" and "c:" are drives, "~" is the home
    /// folder; "\" separates like "/"; "." and ".." are folded, and nothing climbs above the root;
    /// escapes are UTF-8. Where nothing but `name.LNK` is there, that is the path, since a URI
    /// leaves the suffix out. A platform path stays as it is but for "/", which becomes "\".
    ///
    /// False, and the path stays, when a name would contain a separator or U+0000.
    bool setPath(const String& path, bool isNative);
    /// Takes a URI that is relative to this path instead of the current folder.
    bool changePath(const String& uri);

    const String& getPath() const;
    /// The platform path of what the shortcuts lead to; the own path when this is none, or when
    /// they lead nowhere.
    String getResolvedPath() const;
    /// The URI form. With `useHome` the home folder is written as "~".
    ///
    /// Kept: the suffix `.LNK` does not show, and neither do separators at the end; the home folder
    /// is recognised in any case; drive letters are in lower case (held by FileUri.WritesPaths). A
    /// path with a lone surrogate has no URI form, which is empty then.
    String getAbsoluteURI(bool useHome) const;
    /// The way here from the current folder, "." when it is the same; an absolute URI when they
    /// have nothing in common. Segments are compared exactly.
    String getRelativeURI() const;
    String getRelativeURI(const FileSpec& base) const;
    /// @}

    /// @name Its parts
    /// @{
    /// The last name, without the `.LNK` of a shortcut.
    String getName() const;
    /// For people: the name, or the path where there is no name.
    String getDisplayName() const;
    /// What stands behind the last "." of the name; ".profile" has the extension "profile".
    String getExtension() const;
    /// The path of the folder around it. Kept: empty for the root of a drive and for a name in the
    /// root of no drive, and the path itself when it has no "\" (held by FilePath.FindsTheParent).
    String getParent() const;
    /// The same as a spec; false, and `parent` stays, when there is none.
    bool getParentSpec(FileSpec& parent) const;
    /// The drive or server: `C:`, `\\server\share`, or `\` where there are no drives. Empty for a
    /// relative path.
    String getRootName() const;
    /// @}

    /// @name What is there
    /// Links of the file system are followed; shortcuts are files like others.
    /// @{
    bool exists() const;
    bool isFile() const;
    bool isFolder() const;
    /// A shortcut: on Windows a `.LNK` file of the shell, elsewhere a symbolic link.
    bool isAlias() const;
    /// False: neither system has folders that pass for files.
    bool isPackage() const;
    /// Nobody may write to it.
    bool isProtected() const;
    /// It is there and not hidden.
    bool isVisible() const;

    /// Bits of `FileAttribute`, and those of them that `setAttributes` can change on this system.
    /// Either pointer may be null.
    int getAttributes(int* attributes, int* settable) const;
    /// Bits that cannot be changed are ignored.
    int setAttributes(short attributes);
    /// The type and the creator of a file, four characters each; 0, as neither system keeps them.
    unsigned int getType() const;
    unsigned int getCreator() const;
    /// @}

    /// @name Shortcuts
    /// @{
    /// Follows shortcuts to what they lead to, at most 40 (`ErrorCode::IOError` for more, so a ring
    /// ends). Nothing happens when this is no shortcut.
    int resolve();
    int resolve(FileSpec& target) const;
    /// Makes a shortcut at this path that leads to `target`, which may not exist. On Windows the
    /// path gets the suffix `.LNK` when it has none.
    int createAlias(const String& target, bool isNative);
    /// @}

    /// Makes this spec, which is a folder, the name of a file in it that does not exist:
    /// `tmp00000001`, with the lowest number that is free. The name is only a proposal, as nothing
    /// is created. False, and the path stays, when it is no folder or when the system fails.
    bool tempName();

    /// @name Dialogs
    /// The system's own, on Windows. False, and the path stays, when the user chooses nothing, when
    /// the library's user interface is off (`InitTerm::enableUI`), and on other systems.
    /// @{
    /// Chooses an existing file, with `multiple` several: `files`, if not null, gets them all as
    /// `FileSpec` values, and this one becomes the first. `initial`, if not null, is the URI of the
    /// folder that is shown first; `filter` says which files are shown.
    bool chooseFile(const String& prompt, bool multiple, const String* initial, FileFilter* filter,
                    Array* files);
    bool chooseSaveFile(const String& prompt, const String* initial, FileFilter* filter);
    bool chooseFolder(const String& prompt);
    /// @}

private:
    friend struct FileSpecData;

    FileSpecData& data();

    /// Owned; null stands for an empty path.
    FileSpecData* data_;
};

} // namespace KrCore
