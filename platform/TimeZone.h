#pragma once

#include <cstdint>

namespace KrCore::Platform {

/// Reads the time zone of the process anew.
void resetTimeZone();

/// Stores how many minutes local standard time is west of UTC. False when the system does not know.
bool standardBias(int& minutes);

/// Whether daylight-saving time is in force at that second since 1970 UTC: positive yes, 0 no,
/// negative unknown.
int daylightFlag(std::int64_t seconds);

} // namespace KrCore::Platform
