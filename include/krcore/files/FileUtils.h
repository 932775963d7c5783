#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/text/String.h>

namespace KrCore {

class FileSpec;

/// The folders that a program finds its way by, and what distinguishes the file systems. Results
/// that are `int` are error codes, 0 for success; `folder` stays after a failure. Any thread.
class KR_API FileUtils {
public:
    /// Kinds of `getSpecialDir`.
    enum SpecialDir : int {
        StartupDir =
            1, ///< What the host set (`InitTerm::setStartupSpec`), or the program's folder.
        SystemStartupDir = 2, ///< The same folder.
        SystemDir = 3,        ///< `SYSTEM32` of Windows.
        TrashDir = 4,         ///< Not available.
        TempDir = 5,     ///< TEMP, or else the cache of the internet; TMPDIR or "/tmp" elsewhere.
        AppDataDir = 6,  ///< Data of programs for all users, or else those of the user.
        UserDataDir = 7, ///< Data of programs for the user; ".config" in the home folder elsewhere.
        CommonFilesDir = 8, ///< What programs share; Windows only.
        DocumentsDir = 9,
        DesktopDir = 10,
        CommonFilesX86Dir = 11 ///< What 32-bit programs share; Windows only.
    };
    /// `ErrorCode::NotImplemented` for the trash, `CannotExecute` for a kind that there is not,
    /// `IOError` for a folder that the system does not have.
    static int getSpecialDir(int kind, FileSpec& folder);

    static int getStartupDir(FileSpec& folder) { return getSpecialDir(StartupDir, folder); }
    static int getSystemDir(FileSpec& folder) { return getSpecialDir(SystemDir, folder); }
    static int getTrashDir(FileSpec& folder) { return getSpecialDir(TrashDir, folder); }
    static int getTempDir(FileSpec& folder) { return getSpecialDir(TempDir, folder); }
    static int getAppDataDir(FileSpec& folder) { return getSpecialDir(AppDataDir, folder); }
    static int getUserDataDir(FileSpec& folder) { return getSpecialDir(UserDataDir, folder); }

    /// The current folder of the calling thread's context. The process's own is read once for each
    /// context and never changed.
    static FileSpec getCurrentDir();
    /// `FileNotFound` for what is no folder.
    static int setCurrentDir(const FileSpec& folder);

    /// Copies a file. One at the target is replaced when the copy is whole, and stays as it was
    /// when it fails.
    static int copy(const FileSpec& from, const FileSpec& to);

    /// "Windows", or "Unix" elsewhere.
    static String getFileSystem();
    /// The line end of the system's own text files: `CRLF` on Windows, `LF` elsewhere.
    static CRLFEncoding getSystemLF();
};

} // namespace KrCore
