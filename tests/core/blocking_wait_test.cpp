#include "core/blocking_wait.h"

#include "support/test_world.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

TEST(Wait, EndsAtTheFirstReadingThatTheRuleAccepts) {
    std::mt19937 engine(1);
    TestWorld world;
    for (int i = 0; i < 20000; ++i) {
        const double seconds = static_cast<double>(engine() % 12000) / 1000 - 1;
        const QTime time = QTime(0, 0).addMSecs(static_cast<int>(engine() % 86'400'000));
        world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), time));
        const Instant begin = world.runtime.now();
        const double start = world.runtime.secondsSinceMidnight();
        const auto isOver = [&](double waited) {
            return seconds <= 0 || seconds >= 10 ||
                   static_cast<float>(start + seconds) <= static_cast<float>(start + waited);
        };
        world.funzioniMM.WaitSeconds(seconds);
        const double waited = std::chrono::duration<double>(world.runtime.now() - begin).count();
        ASSERT_TRUE(isOver(waited + 1e-9)) << start << " + " << seconds << ", not " << waited;
        ASSERT_TRUE(waited == 0 || !isOver(waited - 1e-9)) << start << " + " << seconds;
    }
}

TEST(Wait, LetsNothingHappenBeforeItsEnd) {
    TestWorld world;
    Instant clicked{0};
    world.runtime.at(std::chrono::seconds(1), [&] { clicked = world.runtime.now(); });
    world.funzioniMM.WaitSeconds(9.99);
    EXPECT_EQ(clicked, Instant{0});
    world.funzioniMM.WaitSeconds(std::nan(""));
    world.runtime.yield();
    EXPECT_EQ(clicked, world.runtime.now());
}
