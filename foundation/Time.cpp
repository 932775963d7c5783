#include <krcore/foundation/Time.h>

#include "foundation/Context.h"
#include "foundation/ModuleHooks.h"
#include "foundation/TickCounter.h"
#include "platform/Clock.h"
#include "platform/TimeZone.h"

namespace KrCore {

namespace {

/// What the clocks know since the library's start.
struct TimeState {
    double timeZoneOffset = 0;
    double counterFrequency = 0; ///< Per second; 0 without a high-resolution counter.
    TickCounter ticks;
};
constinit TimeState timeState;

int daylightAt(std::int64_t seconds) {
    const int flag = Platform::daylightFlag(seconds);
    return flag > 0 ? 1 : flag == 0 ? 0 : -1;
}

} // namespace

// Divided first: as an integer product the counter would overflow after some days.
std::int64_t Time::getHiResTimer() {
    if (timeState.counterFrequency <= 0) return Platform::systemMilliseconds() * 1000;
    const auto counter = static_cast<double>(Platform::counterValue());
    return static_cast<std::int64_t>(counter / timeState.counterFrequency * 1000000);
}

unsigned int Time::getTicks() { return timeState.ticks.ticks(Platform::tickMilliseconds()); }

double Time::getUTCTime() { return static_cast<double>(Platform::systemMilliseconds()); }

double Time::getTimeZoneOffset() { return timeState.timeZoneOffset; }

int Time::isDST(double utcMs) {
    // Far beyond any calendar, and safe to convert; written so that NaN fails as well.
    constexpr double limit = 1e18;
    const double exactSeconds = utcMs / 1000;
    if (!(exactSeconds > -limit && exactSeconds < limit)) return -1;
    const auto seconds = static_cast<std::int64_t>(exactSeconds);

    Context* context = currentContext();
    if (!context) return daylightAt(seconds);
    DaylightAnswer& last = context->daylight;
    if (!last.known || last.seconds != seconds)
        last = {.known = true, .answer = daylightAt(seconds), .seconds = seconds};
    return last.answer;
}

int Time::isDST() { return isDST(getUTCTime()); }

void startTime() {
    Platform::resetTimeZone();
    int minutes = 0;
    timeState.timeZoneOffset = Platform::standardBias(minutes) ? minutes * 60000.0 : 0;
    timeState.counterFrequency = Platform::counterFrequency();
}

} // namespace KrCore
