#pragma once

#include "platform/FileSystem.h"

#include <windows.h>

#include <iterator>

namespace KrCore::Platform {

static_assert(sizeof(wchar_t) == sizeof(unsigned short));

/// A path of the library as the system wants it: 0-terminated, and with the prefix that lifts the
/// limit on its length where that limit would bite.
class WidePath {
public:
    explicit WidePath(PathUnits path);

    /// Null when the path names nothing here.
    const wchar_t* get() const { return isValid_ ? units_ : nullptr; }
    /// The same with `tail` behind it, in this object; null when it does not fit.
    const wchar_t* with(const wchar_t* tail);

private:
    bool append(const wchar_t* units, std::size_t count);

    static constexpr std::size_t capacity = 32768;

    wchar_t units_[capacity];
    std::size_t length_ = 0;
    bool isValid_;
};

/// What an error of the system means to the library.
FileFault faultOf(DWORD systemError);

/// The result of a system call that is true or leaves its error with the thread.
FileFault faultOfCall(bool succeeded);

void takeWide(const wchar_t* units, std::size_t count, TextSink& sink);

} // namespace KrCore::Platform
