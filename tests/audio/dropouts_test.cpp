#include "audio/dropouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

constexpr double kSecond = 1e9;
constexpr double kRate = 44100;

TEST(BufferLevel, SeesWhatADeviceOfItsOwnClockSuffers) {
    constexpr int kPeriod = 384;
    constexpr int kCapacity = 4 * kPeriod;
    std::mt19937 random(3);
    for (const double error : {-0.008, 0.0, 0.008}) {
        BufferLevel seen;
        double now = 5e12;
        double inDevice = 0;  // before the next request, below 0 if the device had to wait
        int dropouts = 0;
        for (int i = 0; i < 100'000; ++i) {
            const bool empty =
                seen.ranEmpty(static_cast<std::int64_t>(now), kPeriod, kCapacity, kRate);
            dropouts += empty ? 1 : 0;
            ASSERT_FALSE(empty && inDevice > 0) << i;
            ASSERT_TRUE(empty || i == 0 || inDevice > -0.05 * kCapacity) << i;
            inDevice = std::max(inDevice, 0.0) + kPeriod;
            const double room = std::max(inDevice + kPeriod - kCapacity, 0.0);
            const bool late = random() % 50 == 0;
            const double played = room + (late ? random() % (2 * kCapacity) : random() % 20);
            inDevice -= played;
            now += played / kRate / (1 + error) * kSecond;
        }
        EXPECT_GT(dropouts, 500);
    }
}

TEST(DropoutCount, CallsAtTheSecondOfTwoGroupsNearEachOther) {
    std::mt19937 random(4);
    for (int run = 0; run < 300; ++run) {
        DropoutCount count;
        double now = 1;
        count.streamBegan(static_cast<std::int64_t>(now * kSecond));
        int groups = 0;
        for (bool called = false; !called;) {
            const double gap = std::vector{0.1, 0.49, 0.51, 5.0, 29.9, 30.1, 100.0}[random() % 7];
            now += gap;
            groups += gap > 0.5 ? 1 : 0;
            const bool expected = groups >= 2 && gap > 0.5 && gap <= 30;
            called = count.callsForMore(static_cast<std::int64_t>(now * kSecond));
            ASSERT_EQ(called, expected) << gap;
        }
        EXPECT_FALSE(count.callsForMore(static_cast<std::int64_t>((now + 5) * kSecond)));
    }
}

}  // namespace
