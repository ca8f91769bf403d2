#include "core/wait_chain.h"

#include "support/test_world.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

struct WaitChainTest : testing::Test {
    TestWorld world;
    VirtualRuntime& runtime = world.runtime;
    WaitChain waits{runtime};

    void passIn(Instant handling) {
        runtime.at(runtime.now(), [this, handling] { runtime.advance(handling); });
        waits.pass();
    }
};

}  // namespace

TEST_F(WaitChainTest, GoesOnFromTheRulesInstantUnlessItIsFarBehind) {
    runtime.advance(300ms);
    EXPECT_EQ(waits.afterMs(100), 100ms);
    EXPECT_EQ(waits.afterMs(500), 600ms) << "known before the wait begins";
    runtime.advance(800ms);
    EXPECT_EQ(waits.delay(), 500ms);
    EXPECT_EQ(waits.afterMs(100), 700ms);
    runtime.advance(100ms);
    EXPECT_EQ(waits.afterMs(100), 800ms);
    runtime.advance(101ms);
    EXPECT_EQ(waits.afterMs(100), 1401ms) << "it begins anew instead of catching up";
}

TEST_F(WaitChainTest, CountsOnlyWhatTheUserKeepsItBusyWith) {
    runtime.advance(10ms);
    passIn(19ms);
    EXPECT_EQ(waits.reached(), 0ms) << "too short to matter";
    passIn(250ms);
    EXPECT_EQ(waits.reached(), 250ms) << "lateness before is not counted";
    waits.pass();
    EXPECT_EQ(waits.reached(), 250ms) << "nothing came";
}

TEST_F(WaitChainTest, FollowsTheClockThroughMidnightAndChanges) {
    runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(23, 59, 59, 500)));
    waits.restart();
    const Instant before = waits.afterSeconds(0.4);
    EXPECT_NEAR(std::chrono::duration<double>(before).count(), 0.4, 0.008);
    runtime.blockUntil(waits.afterSeconds(0.4));
    // A new day has the finest grain again: the next wait is exact.
    const Instant midnight = waits.reached();
    runtime.advance(1ms);
    EXPECT_NEAR(std::chrono::duration<double>(waits.afterSeconds(0.3) - midnight).count(), 0.3,
                1e-6);
    EXPECT_EQ(waits.afterSeconds(10), waits.reached()) << "no wait at all";
}
