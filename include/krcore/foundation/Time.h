#pragma once

#include <krcore/foundation/Export.h>

#include <cstdint>

namespace KrCore {

/// Clocks. Any thread may ask; the answers of `getTicks` across a wrap assume one asking thread.
class KR_API Time {
public:
    /// Microseconds since an arbitrary origin.
    static std::int64_t getHiResTimer();

    /// Ticks of 50 milliseconds, for short spans only: when the system's 32-bit millisecond count
    /// wraps after 49 days, the ticks go on from 5,368,709 instead of 85,899,345.
    static unsigned int getTicks();

    /// Milliseconds since 1970-01-01 00:00 UTC, whole.
    static double getUTCTime();

    /// Milliseconds to add to local standard time to get UTC; daylight saving is left out. As it
    /// was when the library started; 0 when the system does not know.
    static double getTimeZoneOffset();

    /// Whether daylight-saving time is in force locally at `utcMs` (now): 1 yes, 0 no, -1 unknown.
    static int isDST(double utcMs);
    static int isDST();

    Time() = delete;
};

} // namespace KrCore
