#include "platform/Clock.h"

#include <windows.h>

namespace KrCore::Platform {

double counterFrequency() {
    LARGE_INTEGER frequency = {};
    return QueryPerformanceFrequency(&frequency) ? static_cast<double>(frequency.QuadPart) : 0;
}

std::int64_t counterValue() {
    LARGE_INTEGER counter = {};
    QueryPerformanceCounter(&counter);
    return counter.QuadPart;
}

std::uint32_t tickMilliseconds() { return GetTickCount(); }

std::int64_t systemMilliseconds() {
    FILETIME time = {};
    GetSystemTimeAsFileTime(&time);
    const auto ticks = static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32U |
                                                 std::uint64_t{time.dwLowDateTime});
    constexpr std::int64_t ticksPerMillisecond = 10000;
    constexpr std::int64_t millisecondsFrom1601To1970 = 11644473600000;
    return ticks / ticksPerMillisecond - millisecondsFrom1601To1970;
}

} // namespace KrCore::Platform
