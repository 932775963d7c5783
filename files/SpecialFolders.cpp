// The folders that the system and the host name.

#include "files/FileSpecData.h"
#include "files/FolderState.h"
#include "files/PathText.h"
#include "files/SystemText.h"
#include "foundation/StartupSpec.h"

#include <krcore/files/FileUtils.h>
#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

namespace {

using Platform::ShellFolder;

bool readShell(ShellFolder folder, String& path) {
    SystemText sink(path);
    return Platform::readShellFolder(folder, sink);
}

bool readEnvironment(const char* name, String& path) {
    SystemText sink(path);
    return Platform::readEnvironmentPath(name, sink);
}

/// The first of two, or what lies in the second under a name.
bool readEither(ShellFolder first, ShellFolder second, const char* nameInSecond, String& path) {
    if (readShell(first, path)) return true;
    if (!readShell(second, path)) return false;
    if (nameInSecond) path = PathText::join(path, nameInSecond);
    return true;
}

/// The host may name its program instead of the folder.
bool readStartup(String& path) {
    const char* const given = startupSpec();
    if (!given) {
        SystemText sink(path);
        return Platform::readProgramFolder(sink);
    }
    String native;
    SystemText sink(native);
    Platform::readNarrowPath(given, sink);
    const FileSpec spec(native, true);
    path = spec.isFile() ? spec.getParent() : spec.getPath();
    return !path.isEmpty();
}

bool readCommonFiles(String& path) {
    return readEither(ShellFolder::CommonFiles, ShellFolder::ProgramFiles, "Common Files", path);
}

bool readFolder(int kind, String& path) {
    switch (kind) {
    case FileUtils::StartupDir:
    case FileUtils::SystemStartupDir:
        return readStartup(path);
    case FileUtils::SystemDir:
        if (!readEnvironment("WINDIR", path)) return false;
        path += "\\SYSTEM32";
        return true;
    case FileUtils::TempDir:
        return readEnvironment("TEMP", path) || readShell(ShellFolder::Temporary, path);
    case FileUtils::AppDataDir:
        return readEither(ShellFolder::CommonData, ShellFolder::UserData, nullptr, path);
    case FileUtils::UserDataDir:
        return readShell(ShellFolder::UserData, path);
    case FileUtils::DocumentsDir:
        return readEither(ShellFolder::Documents, ShellFolder::Profile, "My Documents", path);
    case FileUtils::DesktopDir:
        return readShell(ShellFolder::Desktop, path);
    case FileUtils::CommonFilesX86Dir:
        return readShell(ShellFolder::CommonFilesX86, path) || readCommonFiles(path);
    default:
        return readCommonFiles(path);
    }
}

} // namespace

int FileUtils::getSpecialDir(int kind, FileSpec& folder) {
    if (kind < StartupDir || kind > CommonFilesX86Dir) return ErrorCode::CannotExecute;
    if (kind == TrashDir) return ErrorCode::NotImplemented;
    String path;
    if (!readFolder(kind, path)) return ErrorCode::IOError;
    FileSpecData::assign(folder, PathText::withBackslashes(path));
    return ErrorCode::Ok;
}

FileSpec FileUtils::getCurrentDir() { return FileSpec(currentFolder(), true); }

int FileUtils::setCurrentDir(const FileSpec& folder) {
    const int code = lookUpFolder(folder);
    if (code != ErrorCode::Ok) return code;
    setCurrentFolder(PathText::folded(systemPathOf(folder)));
    return ErrorCode::Ok;
}

} // namespace KrCore
