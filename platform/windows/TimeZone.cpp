#include "platform/TimeZone.h"

#include <windows.h>

#include <time.h>

namespace KrCore::Platform {

void resetTimeZone() { _tzset(); }

bool standardBias(int& minutes) {
    TIME_ZONE_INFORMATION zone = {};
    if (GetTimeZoneInformation(&zone) == TIME_ZONE_ID_INVALID) return false;
    minutes = static_cast<int>(zone.Bias);
    return true;
}

int daylightFlag(std::int64_t seconds) {
    const __time64_t instant = seconds;
    tm local = {};
    return _localtime64_s(&local, &instant) == 0 ? local.tm_isdst : -1;
}

} // namespace KrCore::Platform
