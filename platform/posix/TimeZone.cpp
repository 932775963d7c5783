#include "platform/TimeZone.h"

#include <time.h>

namespace KrCore::Platform {

void resetTimeZone() { tzset(); }

bool standardBias(int& minutes) {
    minutes = static_cast<int>(timezone / 60);
    return true;
}

int daylightFlag(std::int64_t seconds) {
    const time_t instant = seconds;
    tm local = {};
    return localtime_r(&instant, &local) ? local.tm_isdst : -1;
}

} // namespace KrCore::Platform
