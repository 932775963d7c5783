#pragma once

#include <krcore/containers/TSimpleArray.h>
#include <krcore/files/FileSpec.h>
#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>

namespace KrCore {

class FileFilter;

/// A folder on a `FileSpec`. Results that are `int` are error codes, 0 for success. One object is
/// used by one thread at a time.
class KR_API Folder : public Root {
public:
    explicit Folder(const FileSpec& spec);

    const FileSpec& getFileSpec() const { return spec_; }
    bool exists() const { return spec_.isFolder(); }
    /// Makes the folder and those around it that are missing. `FileExists` when something is there
    /// already. What was made on the way stays after a failure.
    int create();
    /// Removes the folder when it is empty; `IOError` when it is not.
    int remove();
    /// Gives the folder another name where it is: a name, no path. Never replaces anything.
    int rename(const String& name);

    /// Appends what the folder holds and `filter` (null: everything) lets through, files and
    /// folders, hidden ones too, in the order of the system. The specs are the caller's to delete;
    /// after a failure `files` is as it was.
    int getFiles(TSimpleArray<FileSpec>& files, const FileFilter* filter) const;

private:
    FileSpec spec_;
};

} // namespace KrCore
