#include "platform/FileStream.h"

#include "WidePath.h"

#include <algorithm>
#include <utility>

namespace KrCore::Platform {

namespace {

constexpr std::size_t largestStep = std::size_t(1) << 30;

HANDLE handleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

HANDLE openHandle(const wchar_t* path, FileStream::Mode mode) {
    using Mode = FileStream::Mode;
    // As elsewhere, an open file may be renamed and removed.
    constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const DWORD access = mode == Mode::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD making = mode == Mode::Read ? OPEN_EXISTING : OPEN_ALWAYS;
    return CreateFileW(path, access, sharing, nullptr, making, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool isFolder(const wchar_t* path) {
    const DWORD attributes = GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

FileFault FileStream::open(PathUnits path, Mode mode) {
    const WidePath wide(path);
    if (!wide.get()) return FileFault::Invalid;
    const HANDLE opened = openHandle(wide.get(), mode);
    if (opened == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        return isFolder(wide.get()) ? FileFault::Failed : faultOf(error);
    }
    FileFault fault = GetFileType(opened) == FILE_TYPE_DISK ? FileFault::None : FileFault::Failed;
    if (fault == FileFault::None && mode == Mode::Create) fault = faultOfCall(SetEndOfFile(opened));
    if (fault == FileFault::None) {
        handle_ = reinterpret_cast<std::intptr_t>(opened);
        appends_ = mode == Mode::Append;
    } else {
        CloseHandle(opened);
    }
    return fault;
}

FileFault FileStream::close() {
    if (!isOpen()) return FileFault::None;
    return faultOfCall(CloseHandle(handleOf(std::exchange(handle_, closed))));
}

std::int64_t FileStream::read(char* bytes, std::size_t count) {
    DWORD done = 0;
    const auto step = static_cast<DWORD>(std::min(count, largestStep));
    return ReadFile(handleOf(handle_), bytes, step, &done, nullptr) ? std::int64_t(done) : -1;
}

FileFault FileStream::write(const char* bytes, std::size_t count, std::size_t& written) {
    written = 0;
    while (written < count) {
        // This offset stands for the end of the file, wherever that is by now.
        OVERLAPPED end = {};
        end.Offset = 0xFFFFFFFF;
        end.OffsetHigh = 0xFFFFFFFF;
        DWORD done = 0;
        const auto step = static_cast<DWORD>(std::min(count - written, largestStep));
        OVERLAPPED* const place = appends_ ? &end : nullptr;
        if (!WriteFile(handleOf(handle_), bytes + written, step, &done, place))
            return faultOf(GetLastError());
        if (done == 0) return FileFault::Failed;
        written += done;
    }
    return FileFault::None;
}

bool FileStream::seek(std::int64_t position) {
    LARGE_INTEGER distance;
    distance.QuadPart = position;
    return SetFilePointerEx(handleOf(handle_), distance, nullptr, FILE_BEGIN) != 0;
}

std::int64_t FileStream::size() const {
    LARGE_INTEGER size;
    return GetFileSizeEx(handleOf(handle_), &size) ? size.QuadPart : -1;
}

FileFault FileStream::setSize(std::int64_t byteCount) {
    LARGE_INTEGER position;
    const LARGE_INTEGER nowhere = {};
    if (!SetFilePointerEx(handleOf(handle_), nowhere, &position, FILE_CURRENT) || !seek(byteCount))
        return faultOf(GetLastError());
    const FileFault fault = faultOfCall(SetEndOfFile(handleOf(handle_)));
    return seek(position.QuadPart) ? fault : FileFault::Failed;
}

} // namespace KrCore::Platform
