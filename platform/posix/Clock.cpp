#include "platform/Clock.h"

#include <time.h>

namespace KrCore::Platform {

double counterFrequency() {
    timespec resolution;
    return clock_getres(CLOCK_MONOTONIC, &resolution) == 0 ? 1e9 : 0;
}

std::int64_t counterValue() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1000000000 + now.tv_nsec;
}

std::uint32_t tickMilliseconds() { return static_cast<std::uint32_t>(counterValue() / 1000000); }

std::int64_t systemMilliseconds() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

} // namespace KrCore::Platform
