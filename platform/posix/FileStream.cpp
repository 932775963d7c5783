#include "platform/FileStream.h"

#include "FileFaults.h"
#include "PathBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace KrCore::Platform {

namespace {

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

int openFlags(FileStream::Mode mode) {
    switch (mode) {
    case FileStream::Mode::Read:
        return O_RDONLY;
    case FileStream::Mode::Edit:
    case FileStream::Mode::Create:
        return O_RDWR | O_CREAT;
    case FileStream::Mode::Append:
        return O_RDWR | O_CREAT | O_APPEND;
    }
    return O_RDONLY;
}

} // namespace

// A pipe would keep `open` waiting, hence O_NONBLOCK; regular files know no such thing. A file is
// emptied after the look at its kind, not by `open`.
FileFault FileStream::open(PathUnits path, Mode mode) {
    const PathBytes bytes(path);
    if (!bytes.get()) return FileFault::Invalid;
    const int number = ::open(bytes.get(), openFlags(mode) | O_CLOEXEC | O_NONBLOCK, 0666);
    if (number < 0) return errno == EISDIR ? FileFault::Failed : faultOf(errno);
    struct stat found = {};
    FileFault fault = faultOfCall(::fstat(number, &found));
    if (fault == FileFault::None && !S_ISREG(found.st_mode)) fault = FileFault::Failed;
    if (fault == FileFault::None && mode == Mode::Create && found.st_size != 0)
        fault = faultOfCall(::ftruncate(number, 0));
    if (fault == FileFault::None) {
        handle_ = number;
        appends_ = mode == Mode::Append;
    } else {
        ::close(number);
    }
    return fault;
}

FileFault FileStream::close() {
    if (!isOpen()) return FileFault::None;
    return faultOfCall(::close(descriptor(std::exchange(handle_, closed))));
}

std::int64_t FileStream::read(char* bytes, std::size_t count) {
    for (;;) {
        const ssize_t result = ::read(descriptor(handle_), bytes, count);
        if (result >= 0 || errno != EINTR) return result;
    }
}

FileFault FileStream::write(const char* bytes, std::size_t count, std::size_t& written) {
    written = 0;
    while (written < count) {
        const ssize_t result = ::write(descriptor(handle_), bytes + written, count - written);
        if (result < 0 && errno != EINTR) return faultOf(errno);
        if (result == 0) return FileFault::Failed;
        if (result > 0) written += static_cast<std::size_t>(result);
    }
    return FileFault::None;
}

bool FileStream::seek(std::int64_t position) {
    return ::lseek(descriptor(handle_), position, SEEK_SET) >= 0;
}

std::int64_t FileStream::size() const {
    struct stat found = {};
    return ::fstat(descriptor(handle_), &found) == 0 ? found.st_size : -1;
}

FileFault FileStream::setSize(std::int64_t byteCount) {
    return faultOfCall(::ftruncate(descriptor(handle_), byteCount));
}

} // namespace KrCore::Platform
