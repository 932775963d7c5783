#include "platform/FileSystem.h"

#include "WidePath.h"

#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <memory>

namespace KrCore::Platform {

const int settableAttributes =
    attributeReadOnly | attributeHidden | attributeSystem | attributeArchive;
const bool rootsAreDrives = true;

namespace {

constexpr int knownAttributes = settableAttributes | attributeFolder | attributeAlias;

FileFault readAttributes(const wchar_t* path, DWORD& attributes) {
    attributes = GetFileAttributesW(path);
    return faultOfCall(attributes != INVALID_FILE_ATTRIBUTES);
}

/// What there is at the end of all links.
bool readTarget(const wchar_t* path, BY_HANDLE_FILE_INFORMATION& target) {
    constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path, 0, sharing, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool isRead = GetFileInformationByHandle(file, &target) != 0;
    CloseHandle(file);
    return isRead;
}

/// Some servers know no index and give 0 for every file.
bool isSameFile(const wchar_t* path, const wchar_t* otherPath) {
    BY_HANDLE_FILE_INFORMATION file;
    BY_HANDLE_FILE_INFORMATION other;
    return readTarget(path, file) && readTarget(otherPath, other) &&
           (file.nFileIndexHigh | file.nFileIndexLow) != 0 &&
           file.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           file.nFileIndexHigh == other.nFileIndexHigh && file.nFileIndexLow == other.nFileIndexLow;
}

/// Where a copy gathers until it is whole: beside its target, under a short name.
class GatheringPlace {
public:
    explicit GatheringPlace(PathUnits target) {
        std::size_t length = target.size();
        while (length > 0 && target[length - 1] != '\\' && target[length - 1] != '/')
            --length;
        length = std::min(length, std::size(units_) - nameLength);
        std::copy_n(target.data(), length, units_);
        wchar_t name[nameLength];
        std::swprintf(name, nameLength, L"~%08lx%08lx", GetCurrentThreadId(), GetTickCount());
        std::copy_n(name, std::wcslen(name), units_ + length);
        length_ = length + std::wcslen(name);
    }
    PathUnits path() const { return {units_, length_}; }

private:
    static constexpr std::size_t nameLength = 32;

    unsigned short units_[32768];
    std::size_t length_ = 0;
};

/// Gives a text of a call that wants a buffer and returns a length, 0 for a failure and more than
/// fits for a text that is too long.
template <class Call>
bool takeText(Call call, TextSink& sink) {
    wchar_t text[32768];
    const DWORD length = call(text, DWORD(std::size(text)));
    if (length == 0 || length >= std::size(text)) return false;
    takeWide(text, length, sink);
    return true;
}

int shellNumber(ShellFolder folder) {
    switch (folder) {
    case ShellFolder::Desktop:
        return CSIDL_DESKTOPDIRECTORY;
    case ShellFolder::Documents:
        return CSIDL_PERSONAL;
    case ShellFolder::UserData:
        return CSIDL_APPDATA;
    case ShellFolder::CommonData:
        return CSIDL_COMMON_APPDATA;
    case ShellFolder::ProgramFiles:
        return CSIDL_PROGRAM_FILES;
    case ShellFolder::ProgramFilesX86:
        return CSIDL_PROGRAM_FILESX86;
    case ShellFolder::CommonFiles:
        return CSIDL_PROGRAM_FILES_COMMON;
    case ShellFolder::CommonFilesX86:
        return CSIDL_PROGRAM_FILES_COMMONX86;
    case ShellFolder::Temporary:
        return CSIDL_INTERNET_CACHE;
    case ShellFolder::Profile:
        return CSIDL_PROFILE;
    }
    return CSIDL_PROFILE;
}

} // namespace

FileFault readFileFacts(PathUnits path, FileFacts& facts) {
    facts = {};
    const WidePath wide(path);
    if (!wide.get()) return FileFault::Invalid;
    WIN32_FILE_ATTRIBUTE_DATA found;
    if (!GetFileAttributesExW(wide.get(), GetFileExInfoStandard, &found))
        return faultOf(GetLastError());
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        facts.attributes |= attributeAlias;
        BY_HANDLE_FILE_INFORMATION target;
        if (!readTarget(wide.get(), target)) return FileFault::None;
        found.dwFileAttributes = target.dwFileAttributes;
        found.nFileSizeHigh = target.nFileSizeHigh;
        found.nFileSizeLow = target.nFileSizeLow;
    }
    const DWORD attributes = found.dwFileAttributes;
    facts.attributes |= static_cast<int>(attributes) & knownAttributes;
    facts.isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    facts.isFile = (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
    if (facts.isFile)
        facts.byteCount = std::int64_t(found.nFileSizeHigh) << 32 | found.nFileSizeLow;
    return FileFault::None;
}

FileFault setFileAttributes(PathUnits path, int attributes) {
    const WidePath wide(path);
    if (!wide.get()) return FileFault::Invalid;
    DWORD found = 0;
    const FileFault fault = readAttributes(wide.get(), found);
    if (fault != FileFault::None) return fault;
    constexpr DWORD settable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                               FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    constexpr DWORD none = FILE_ATTRIBUTE_NORMAL;
    const DWORD wanted = (found & ~(settable | none)) | (static_cast<DWORD>(attributes) & settable);
    return faultOfCall(SetFileAttributesW(wide.get(), wanted ? wanted : none));
}

FileFault createFolder(PathUnits path) {
    const WidePath wide(path);
    return wide.get() ? faultOfCall(CreateDirectoryW(wide.get(), nullptr)) : FileFault::Invalid;
}

FileFault removeEntry(PathUnits path) {
    const WidePath wide(path);
    if (!wide.get()) return FileFault::Invalid;
    DWORD found = 0;
    const FileFault fault = readAttributes(wide.get(), found);
    if (fault != FileFault::None) return fault;
    const bool isFolder = (found & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return faultOfCall(isFolder ? RemoveDirectoryW(wide.get()) : DeleteFileW(wide.get()));
}

FileFault renameEntry(PathUnits from, PathUnits to) {
    const WidePath source(from);
    const WidePath target(to);
    if (!source.get() || !target.get()) return FileFault::Invalid;
    return faultOfCall(MoveFileExW(source.get(), target.get(), 0));
}

FileFault copyFile(PathUnits from, PathUnits to) {
    const WidePath source(from);
    const WidePath target(to);
    if (!source.get() || !target.get()) return FileFault::Invalid;
    DWORD found = 0;
    FileFault fault = readAttributes(source.get(), found);
    if (fault != FileFault::None) return fault;
    if ((found & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileFault::Failed;
    if (isSameFile(source.get(), target.get())) return FileFault::None;
    const GatheringPlace place(to);
    const WidePath gathering(place.path());
    if (!gathering.get()) return FileFault::Invalid;
    fault = faultOfCall(CopyFileW(source.get(), gathering.get(), TRUE));
    if (fault != FileFault::None) return fault;
    fault = faultOfCall(MoveFileExW(gathering.get(), target.get(), MOVEFILE_REPLACE_EXISTING));
    if (fault != FileFault::None) {
        SetFileAttributesW(gathering.get(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(gathering.get());
    }
    return fault;
}

FileFault listFolder(PathUnits path, TextSink& names) {
    WidePath pattern(path);
    const bool endsInSeparator = !path.empty() && (path.back() == '\\' || path.back() == '/');
    if (!pattern.with(endsInSeparator ? L"*" : L"\\*")) return FileFault::Invalid;
    WIN32_FIND_DATAW entry;
    const HANDLE search =
        FindFirstFileExW(pattern.get(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        FileFacts facts;
        // The root of a drive has no "." to be found.
        const bool isEmpty = error == ERROR_FILE_NOT_FOUND &&
                             readFileFacts(path, facts) == FileFault::None && facts.isFolder;
        return isEmpty ? FileFault::None : faultOf(error);
    }
    const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> closing(search, FindClose);
    do {
        const bool isDots =
            std::wcscmp(entry.cFileName, L".") == 0 || std::wcscmp(entry.cFileName, L"..") == 0;
        if (!isDots) takeWide(entry.cFileName, std::wcslen(entry.cFileName), names);
    } while (FindNextFileW(search, &entry));
    const DWORD error = GetLastError();
    return error == ERROR_NO_MORE_FILES ? FileFault::None : faultOf(error);
}

FileFault executeFile(PathUnits path) {
    const WidePath wide(path);
    if (!wide.get()) return FileFault::Invalid;
    DWORD found = 0;
    const FileFault fault = readAttributes(wide.get(), found);
    if (fault != FileFault::None) return fault;
    const HINSTANCE result =
        ShellExecuteW(nullptr, nullptr, wide.get(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > 32 ? FileFault::None : FileFault::Failed;
}

void readNarrowPath(const char* bytes, TextSink& path) {
    wchar_t text[32768];
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes, -1, text, int(std::size(text)));
    if (length > 1) takeWide(text, static_cast<std::size_t>(length - 1), path);
}

bool readEnvironmentPath(const char* name, TextSink& path) {
    wchar_t wideName[64];
    std::swprintf(wideName, std::size(wideName), L"%hs", name);
    return takeText(
        [&wideName](wchar_t* text, DWORD size) {
            return GetEnvironmentVariableW(wideName, text, size);
        },
        path);
}

bool readWorkingFolder(TextSink& path) {
    return takeText([](wchar_t* text, DWORD size) { return GetCurrentDirectoryW(size, text); },
                    path);
}

bool readProgramFolder(TextSink& path) {
    return takeText(
        [](wchar_t* text, DWORD size) -> DWORD {
            const DWORD length = GetModuleFileNameW(nullptr, text, size);
            if (length == 0 || length >= size) return length;
            wchar_t* const separator = std::wcsrchr(text, L'\\');
            return separator ? static_cast<DWORD>(separator - text) : 0;
        },
        path);
}

bool readShellFolder(ShellFolder folder, TextSink& path) {
    wchar_t text[MAX_PATH];
    const HRESULT result = SHGetFolderPathW(nullptr, shellNumber(folder), nullptr, 0, text);
    if (result != S_OK || text[0] == 0) return false;
    takeWide(text, std::wcslen(text), path);
    return true;
}

const char* fileSystemName() { return "Windows"; }

bool usesCarriageReturns() { return true; }

} // namespace KrCore::Platform
