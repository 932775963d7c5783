#include "platform/FileSystem.h"

#include "FileFaults.h"
#include "PathBytes.h"

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

extern char** environ;

namespace KrCore::Platform {

const int settableAttributes = attributeReadOnly;
const bool shortcutsNeedSuffix = false;
const bool rootsAreDrives = false;

namespace {

constexpr mode_t anyoneWrites = S_IWUSR | S_IWGRP | S_IWOTH;

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number_; }
    /// What was written late may fail only now.
    FileFault close() { return faultOfCall(::close(std::exchange(number_, -1))); }

private:
    int number_;
};

std::string_view lastName(std::string_view path) { return path.substr(path.rfind('/') + 1); }

FileFault copyBytes(int from, int to) {
    char block[65536];
    for (;;) {
        const ssize_t count = ::read(from, block, sizeof block);
        if (count == 0) return FileFault::None;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return faultOf(errno);
        for (ssize_t written = 0; written < count;) {
            const ssize_t step =
                ::write(to, block + written, static_cast<std::size_t>(count - written));
            if (step < 0 && errno != EINTR) return faultOf(errno);
            if (step == 0) return FileFault::Failed;
            if (step > 0) written += step;
        }
    }
}

/// Copies into the new file at `to`.
FileFault fillCopy(int from, const struct stat& source, Descriptor& to) {
    FileFault fault = copyBytes(from, to.get());
    if (fault == FileFault::None) fault = faultOfCall(::fchmod(to.get(), source.st_mode & 0777U));
    const FileFault closing = to.close();
    return fault == FileFault::None ? closing : fault;
}

/// Where the bytes of the copy gather until it is whole: beside the target, under a name of any
/// file's length.
bool nameForCopy(std::string_view target, char (&name)[PATH_MAX]) {
    const std::string_view folder = target.substr(0, target.rfind('/') + 1);
    const int length = std::snprintf(name, sizeof name, "%.*s.XXXXXX",
                                     static_cast<int>(folder.size()), folder.data());
    return length > 0 && length < PATH_MAX;
}

bool isSameFile(const struct stat& file, const char* path) {
    struct stat other = {};
    return ::stat(path, &other) == 0 && file.st_dev == other.st_dev && file.st_ino == other.st_ino;
}

bool readVariable(const char* name, const char*& value) {
    value = std::getenv(name);
    return value && *value;
}

/// The folder of the variable, or `fallback` in the user's home.
bool readUserFolder(const char* variable, const char* fallback, TextSink& path) {
    const char* value = nullptr;
    char folder[PATH_MAX];
    if (!variable || !readVariable(variable, value)) {
        if (!readVariable("HOME", value)) return false;
        const int length = std::snprintf(folder, sizeof folder, "%s%s", value, fallback);
        if (length < 0 || length >= PATH_MAX) return false;
        value = folder;
    }
    takeAnyPath(value, path);
    return true;
}

} // namespace

FileFault faultOf(int systemError) {
    switch (systemError) {
    case 0:
        return FileFault::None;
    case ENOENT:
    case ENOTDIR:
        return FileFault::NotFound;
    case EEXIST:
        return FileFault::Exists;
    case ENOTEMPTY:
        return FileFault::NotEmpty;
    case EACCES:
    case EPERM:
    case EROFS:
        return FileFault::Denied;
    case EINVAL:
    case ENAMETOOLONG:
    case EILSEQ:
        return FileFault::Invalid;
    default:
        return FileFault::Failed;
    }
}

FileFault faultOfCall(int result) { return result == 0 ? FileFault::None : faultOf(errno); }

FileFault readFileFacts(PathUnits path, FileFacts& facts) {
    facts = {};
    const PathBytes bytes(path);
    if (!bytes.get()) return FileFault::Invalid;
    struct stat found = {};
    if (::lstat(bytes.get(), &found) != 0) return faultOf(errno);
    if (S_ISLNK(found.st_mode)) {
        facts.attributes |= attributeAlias;
        if (::stat(bytes.get(), &found) != 0) return FileFault::None;
    }
    facts.isFile = S_ISREG(found.st_mode);
    facts.isFolder = S_ISDIR(found.st_mode);
    if (facts.isFile) facts.byteCount = found.st_size;
    if (facts.isFolder) facts.attributes |= attributeFolder;
    if ((found.st_mode & anyoneWrites) == 0) facts.attributes |= attributeReadOnly;
    if (lastName(bytes.get()).starts_with('.')) facts.attributes |= attributeHidden;
    return FileFault::None;
}

FileFault setFileAttributes(PathUnits path, int attributes) {
    const PathBytes bytes(path);
    if (!bytes.get()) return FileFault::Invalid;
    struct stat found = {};
    if (::stat(bytes.get(), &found) != 0) return faultOf(errno);
    mode_t mode = found.st_mode & 07777U;
    if ((attributes & attributeReadOnly) != 0) {
        mode &= ~anyoneWrites;
    } else if ((mode & anyoneWrites) == 0) {
        mode |= S_IWUSR;
    }
    return faultOfCall(::chmod(bytes.get(), mode));
}

FileFault createFolder(PathUnits path) {
    const PathBytes bytes(path);
    return bytes.get() ? faultOfCall(::mkdir(bytes.get(), 0777)) : FileFault::Invalid;
}

FileFault removeEntry(PathUnits path) {
    const PathBytes bytes(path);
    return bytes.get() ? faultOfCall(std::remove(bytes.get())) : FileFault::Invalid;
}

FileFault renameEntry(PathUnits from, PathUnits to) {
    const PathBytes source(from);
    const PathBytes target(to);
    if (!source.get() || !target.get()) return FileFault::Invalid;
    const int result =
        ::renameat2(AT_FDCWD, source.get(), AT_FDCWD, target.get(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS)) return faultOfCall(result);
    // A file system that cannot promise it: the next best is to look first.
    struct stat found = {};
    if (::lstat(target.get(), &found) == 0) return FileFault::Exists;
    return faultOfCall(std::rename(source.get(), target.get()));
}

FileFault copyFile(PathUnits from, PathUnits to) {
    const PathBytes source(from);
    const PathBytes target(to);
    if (!source.get() || !target.get()) return FileFault::Invalid;
    struct stat found = {};
    if (::stat(source.get(), &found) != 0) return faultOf(errno);
    if (!S_ISREG(found.st_mode)) return FileFault::Failed;
    if (isSameFile(found, target.get())) return FileFault::None;
    const Descriptor input(::open(source.get(), O_RDONLY | O_CLOEXEC));
    if (input.get() < 0) return faultOf(errno);

    // A copy onto a link goes to the file that it leads to.
    char place[PATH_MAX];
    if (!::realpath(target.get(), place))
        std::memcpy(place, target.get(), std::strlen(target.get()) + 1);
    char gathering[PATH_MAX];
    if (::access(place, F_OK) == 0 && ::access(place, W_OK) != 0) return faultOf(errno);
    if (!nameForCopy(place, gathering)) return FileFault::Invalid;
    Descriptor output(::mkostemp(gathering, O_CLOEXEC));
    if (output.get() < 0) return faultOf(errno);
    FileFault fault = fillCopy(input.get(), found, output);
    if (fault == FileFault::None) fault = faultOfCall(std::rename(gathering, place));
    if (fault != FileFault::None) ::unlink(gathering);
    return fault;
}

FileFault listFolder(PathUnits path, TextSink& names) {
    const PathBytes bytes(path);
    if (!bytes.get()) return FileFault::Invalid;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(bytes.get()), ::closedir);
    if (!folder) return faultOf(errno);
    const bool isRoot = bytes.get()[1] == 0;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(folder.get());
        if (!entry) return faultOf(errno);
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") takeName(entry->d_name, isRoot, names);
    }
}

FileFault executeFile(PathUnits path) {
    const PathBytes bytes(path);
    if (!bytes.get()) return FileFault::Invalid;
    struct stat found = {};
    if (::stat(bytes.get(), &found) != 0) return faultOf(errno);
    // The desktop's opener outlives the shell that starts it, so nobody has to wait for it.
    static constexpr char script[] = "command -v xdg-open > /dev/null || exit 127; "
                                     "xdg-open \"$1\" < /dev/null > /dev/null 2>&1 &";
    const char* arguments[] = {"sh", "-c", script, "sh", bytes.get(), nullptr};
    pid_t shell = 0;
    const int error = ::posix_spawn(&shell, "/bin/sh", nullptr, nullptr,
                                    const_cast<char* const*>(arguments), environ);
    if (error != 0) return FileFault::Failed;
    int status = 0;
    while (::waitpid(shell, &status, 0) < 0) {
        if (errno != EINTR) return FileFault::None; // The host collects its children itself.
    }
    return status == 0 ? FileFault::None : FileFault::Failed;
}

bool isShortcut(PathUnits path) {
    FileFacts facts;
    return readFileFacts(path, facts) == FileFault::None &&
           (facts.attributes & attributeAlias) != 0;
}

FileFault readShortcut(PathUnits path, TextSink& target) {
    const PathBytes bytes(path);
    if (!bytes.get()) return FileFault::Invalid;
    char link[PATH_MAX];
    const ssize_t length = ::readlink(bytes.get(), link, sizeof link - 1);
    if (length < 0) return faultOf(errno);
    link[length] = 0;
    if (link[0] == '/') {
        takePath(link, target);
        return FileFault::None;
    }
    // The way begins in the folder that holds the link, whatever leads there.
    const std::string_view own(bytes.get());
    char folder[PATH_MAX];
    std::snprintf(folder, sizeof folder, "%.*s", static_cast<int>(own.rfind('/') + 1), own.data());
    char real[PATH_MAX];
    if (!::realpath(folder, real)) return faultOf(errno);
    char whole[PATH_MAX];
    const int count = std::snprintf(whole, sizeof whole, "%s/%s", real, link);
    if (count < 0 || count >= PATH_MAX) return FileFault::Invalid;
    takePath(whole, target);
    return FileFault::None;
}

FileFault createShortcut(PathUnits path, PathUnits target) {
    const PathBytes bytes(path);
    const PathBytes targetBytes(target);
    if (!bytes.get() || !targetBytes.get()) return FileFault::Invalid;
    return faultOfCall(::symlink(targetBytes.get(), bytes.get()));
}

void readNarrowPath(const char* bytes, TextSink& path) { takeAnyPath(bytes, path); }

bool readEnvironmentPath(const char* name, TextSink& path) {
    const char* value = nullptr;
    if (!readVariable(name, value)) return false;
    takeAnyPath(value, path);
    return true;
}

bool readWorkingFolder(TextSink& path) {
    char folder[PATH_MAX];
    if (!::getcwd(folder, sizeof folder) || folder[0] != '/') return false;
    takePath(folder, path);
    return true;
}

bool readProgramFolder(TextSink& path) {
    char program[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", program, sizeof program - 1);
    if (length <= 0) return false;
    program[length] = 0;
    *std::strrchr(program, '/') = 0;
    takePath(program, path);
    return true;
}

bool readShellFolder(ShellFolder folder, TextSink& path) {
    switch (folder) {
    case ShellFolder::Desktop:
        return readUserFolder("XDG_DESKTOP_DIR", "/Desktop", path);
    case ShellFolder::Documents:
        return readUserFolder("XDG_DOCUMENTS_DIR", "/Documents", path);
    case ShellFolder::UserData:
        return readUserFolder("XDG_CONFIG_HOME", "/.config", path);
    case ShellFolder::Profile:
        return readUserFolder(nullptr, "", path);
    case ShellFolder::Temporary:
        if (!readEnvironmentPath("TMPDIR", path)) takePath("/tmp", path);
        return true;
    // Programs have no folders of their own here.
    case ShellFolder::CommonData:
    case ShellFolder::ProgramFiles:
    case ShellFolder::ProgramFilesX86:
    case ShellFolder::CommonFiles:
    case ShellFolder::CommonFilesX86:
        break;
    }
    return false;
}

const char* fileSystemName() { return "Unix"; }

bool usesCarriageReturns() { return false; }

} // namespace KrCore::Platform
