#include "WidePath.h"

#include <algorithm>
#include <cwchar>

namespace KrCore::Platform {

namespace {

/// A folder's path has to leave room for a short name behind it.
constexpr std::size_t longestPlainPath = MAX_PATH - 13;

bool isSeparator(unsigned short unit) { return unit == '\\' || unit == '/'; }

/// Whether the path can name a file: it neither ends early at a 0 nor names a stream inside a file
/// with a ":" behind the drive's.
bool isPlain(PathUnits path, std::size_t start) {
    for (std::size_t index = 0; index < path.size(); ++index) {
        if (path[index] == 0 || (path[index] == ':' && index != start + 1)) return false;
    }
    return !path.empty();
}

} // namespace

WidePath::WidePath(PathUnits path) : isValid_(false) {
    const auto isSeparatorAt = [path](std::size_t index) {
        return index < path.size() && isSeparator(path[index]);
    };
    const bool isVerbatim = path.size() > 3 && path[0] == '\\' && path[1] == '\\' && path[2] == '?';
    if (!isPlain(path, isVerbatim ? 4 : 0)) return;
    const bool isLong = path.size() >= longestPlainPath && !isVerbatim;
    bool fits = true;
    if (isLong && path[1] == ':') {
        fits = append(L"\\\\?\\", 4);
    } else if (isLong && isSeparatorAt(0) && isSeparatorAt(1)) {
        fits = append(L"\\\\?\\UNC\\", 8);
        path = path.subspan(2);
    }
    const std::size_t start = length_;
    isValid_ = fits && append(reinterpret_cast<const wchar_t*>(path.data()), path.size());
    if (!isVerbatim) std::replace(units_ + start, units_ + length_, L'/', L'\\');
}

const wchar_t* WidePath::with(const wchar_t* tail) {
    return isValid_ && append(tail, std::wcslen(tail)) ? units_ : nullptr;
}

bool WidePath::append(const wchar_t* units, std::size_t count) {
    if (count >= capacity - length_) return false;
    std::copy_n(units, count, units_ + length_);
    length_ += count;
    units_[length_] = 0;
    return true;
}

FileFault faultOf(DWORD systemError) {
    switch (systemError) {
    case ERROR_SUCCESS:
        return FileFault::None;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
        return FileFault::NotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return FileFault::Exists;
    case ERROR_DIR_NOT_EMPTY:
        return FileFault::NotEmpty;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_PRIVILEGE_NOT_HELD:
        return FileFault::Denied;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return FileFault::Invalid;
    default:
        return FileFault::Failed;
    }
}

FileFault faultOfCall(bool succeeded) {
    return succeeded ? FileFault::None : faultOf(GetLastError());
}

void takeWide(const wchar_t* units, std::size_t count, TextSink& sink) {
    sink.take({reinterpret_cast<const unsigned short*>(units), count});
}

} // namespace KrCore::Platform
