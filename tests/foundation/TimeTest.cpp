#include "foundation/TickCounter.h"

#include <krcore/foundation/Lock.h>
#include <krcore/foundation/LockRef.h>
#include <krcore/foundation/Lockable.h>
#include <krcore/foundation/Thread.h>
#include <krcore/foundation/Time.h>
#include <krcore/foundation/Version.h>

#include "support/HeapFigures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace KrCore;
using namespace KrCore::Testing;

TEST(TimeTicks, KeepTheirOddStepAcrossAWrap) {
    TickCounter counter;
    EXPECT_EQ(counter.ticks(99), 1U);
    EXPECT_EQ(counter.ticks(4294967295U), 85899345U);
    EXPECT_EQ(counter.ticks(100), 5368709U + 2U);
    EXPECT_EQ(counter.ticks(150), 5368709U + 3U);
    EXPECT_EQ(counter.ticks(0), 10737418U);
}

TEST(Time, Advances) {
    const std::int64_t micros = Time::getHiResTimer();
    const double utc = Time::getUTCTime();
    const unsigned int ticks = Time::getTicks();
    Thread::sleep(2);
    EXPECT_GE(Time::getHiResTimer() - micros, 1000);
    EXPECT_GE(Time::getUTCTime(), utc);
    EXPECT_LE(Time::getTicks() - ticks, 100U);
    EXPECT_GT(utc, 1.7e12) << "milliseconds since 1970";
    EXPECT_EQ(utc, std::floor(utc));
    EXPECT_LE(std::abs(Time::getTimeZoneOffset()), 14 * 3600000.0);
}

TEST(Time, MeasuresLaps) {
    const std::int64_t begin = Time::getHiResTimer();
    Thread::getHiResTimer();
    const std::int64_t lap = Thread::getHiResTimer();
    EXPECT_GE(lap, 0);
    EXPECT_LE(lap, Time::getHiResTimer() - begin);
}

TEST(Time, KnowsNothingOfInstantsBeyondTheCalendar) {
    const double rows[] = {std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::infinity(), -1e300, 1e21, 9.3e21};
    for (const double instant : rows)
        EXPECT_EQ(Time::isDST(instant), -1) << instant;
}

TEST(Time, AnswersForTheWholeSecond) {
    const double instant = 1720000000000.0; // a July
    const int answer = Time::isDST(instant);
    EXPECT_TRUE(answer == 0 || answer == 1);
    EXPECT_EQ(Time::isDST(instant + 999), answer);
    EXPECT_EQ(Time::isDST(0), 0) << "the first second of all is asked for, not remembered";
    EXPECT_EQ(Time::isDST(-999), 0) << "truncated toward zero";
}

TEST(Lockable, NeverMakesALockInASingleThread) {
    const HeapFigures before = HeapFigures::now();
    Lockable object;
    object.createLock();
    object.lock();
    object.unlock();
    EXPECT_EQ(before.change(), HeapFigures{});
    LockRef nothing(nullptr);
}

TEST(Lock, CountsWithWrap) {
    int counter = 2147483647;
    EXPECT_EQ(Lock::increment(counter), -2147483647 - 1);
    EXPECT_EQ(Lock::decrement(counter), 2147483647);
}

TEST(Version, IsFourFiveSix) {
    EXPECT_EQ(getVersion(), 263430);
    DebugAlert(nullptr, nullptr, 0);
}
