#include "core/wait_chain.h"

#include "core/blocking_wait.h"
#include "support/test_world.h"

#include <gtest/gtest.h>

#include <random>

using namespace std::chrono_literals;

/// Random waits, some reached late, among changes of the system's time and input that takes time.
TEST(WaitChain, GoesOnFromEachEndUnlessItIsFarBehind) {
    std::mt19937 random(1);
    TestWorld world;
    VirtualRuntime& runtime = world.runtime;
    QDateTime midnight(QDate(2004, 10, 1), QTime(23, 59));
    runtime.setWallClock(midnight);
    WaitChain waits(runtime);
    const auto seconds = [](Instant time) { return std::chrono::duration<double>(time).count(); };
    Instant reached{0};
    double clock = runtime.secondsSinceMidnight();
    const auto beginWait = [&] {
        const double late = seconds(runtime.now() - reached);
        const double reading = runtime.secondsSinceMidnight() - (late > 0.5 ? 0 : late);
        reached = late > 0.5 ? runtime.now() : reached;
        clock = late > 0.5 || std::abs(reading - clock) > 0.05 ? reading : clock;
    };
    for (int i = 0; i < 20000; ++i) {
        const auto what = random() % 7;
        const int ms = static_cast<int>(random() % 700);
        const Instant busy = 1ms * (ms % 2 ? ms / 2 : ms % 41);
        if (what == 0) {
            runtime.advance(1ms * ms);
        } else if (what < 3) {
            runtime.blockUntil(reached);
        } else if (what == 3) {
            runtime.setWallClock(midnight = midnight.addMSecs(ms % 3 ? ms / 7 : -ms * 90));
        } else if (what == 4) {
            if (ms % 3)
                runtime.at(runtime.now(), [&] { runtime.advance(busy); });
            waits.pass();
            if (ms % 3 && busy > 20ms) {
                reached += busy;
                clock += seconds(busy);
            }
        } else if (what == 5) {
            beginWait();
            reached += 1ms * ms;
            clock += seconds(1ms * ms);
            ASSERT_EQ(waits.afterMs(ms), reached) << i;
        } else {
            const double length = ms % 9 ? ms / 700.0 : ms - 300;
            if (length > 0 && length < 10) {
                beginWait();
                const double end = blocking_wait::endOf(clock, length);
                reached += secondsToInstant(end - std::exchange(clock, end));
            }
            ASSERT_EQ(waits.afterSeconds(length), reached) << i;
        }
        ASSERT_EQ(waits.reached(), reached) << i;
        ASSERT_EQ(waits.delay(), runtime.now() - reached) << i;
    }
}
