#include "core/blocking_wait.h"

#include "support/test_world.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

bool isOver(double start, double seconds, double clock) {
    return static_cast<float>(start + seconds) <= static_cast<float>(clock);
}

}  // namespace

TEST(Wait, EndsAtTheFirstReadingThatTheRuleAccepts) {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> times(0, 86400);
    std::uniform_real_distribution<double> lengths(0.001, 9.999);
    for (int i = 0; i < 20000; ++i) {
        const double start = times(engine);
        const double seconds = lengths(engine);
        const double end = blocking_wait::endOf(start, seconds);
        EXPECT_TRUE(isOver(start, seconds, end)) << start << " + " << seconds;
        EXPECT_FALSE(isOver(start, seconds, std::nextafter(end, 0.0))) << start << " + " << seconds;
    }
}

TEST(Wait, ZeroNegativeAndTenSecondsReturnAtOnce) {
    TestWorld world;
    for (const double seconds : {0.0, -1.0, 10.0, 1e9, std::nan("")}) {
        world.funzioniMM.WaitSeconds(seconds);
        EXPECT_EQ(world.runtime.now(), Instant{0}) << seconds;
    }
    world.funzioniMM.WaitSeconds(9.99);
    EXPECT_NEAR(std::chrono::duration<double>(world.runtime.now()).count(), 9.99, 0.005);
}

TEST(Wait, HasTheGrainOfSinglePrecisionLateInTheDayAndEndsAfterMidnight) {
    TestWorld world;
    world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(23, 59, 59, 990)));
    world.funzioniMM.WaitSeconds(0.05);
    const double waited = std::chrono::duration<double>(world.runtime.now()).count();
    // 86400.04 lies between the single-precision numbers 86400.0390625 and 86400.046875.
    EXPECT_NEAR(86399.99 + waited, (86400.03125 + 86400.0390625) / 2, 1e-6);
}
