#include "audio/message_timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

/// Random plans, sends and cancellations, against a plain list in the order of the instants.
TEST(PlannedEvents, ComeInTheOrderOfTheirInstantsUnlessTakenBack) {
    constexpr double kRate = 48000;
    constexpr int kBlock = 64;
    constexpr std::int64_t kPeriod = 5'333'333;
    std::mt19937 random(5);
    MessageTimeline timeline(kRate);
    std::vector<SoundEvent> model;
    std::uint32_t number = 0;
    std::uint64_t unplanned = 0;
    std::int64_t now = 1'000'000'000;
    std::int64_t frame = 0;
    std::size_t checked = 0;
    for (int period = 0; period < 20000; ++period, now += kPeriod, frame += 256) {
        SoundEvent event;
        switch (random() % 4) {
            case 0:
                event.planned = true;
                event.time = now + static_cast<std::int64_t>(random() % 400'000'000);
                break;
            case 1:
                event.time = now;
                ++unplanned;
                break;
            case 2:
                if (random() % 20 == 0) {
                    event.kind = SoundEvent::Kind::CancelPlanned;
                    event.time = now;
                    timeline.post(event);
                    std::erase_if(model, [now](const SoundEvent& waiting) {
                        return waiting.planned && waiting.time > now;
                    });
                }
                [[fallthrough]];
            default:
                event.kind = SoundEvent::Kind::CancelPlanned;
                break;
        }
        if (event.kind == SoundEvent::Kind::Message) {
            event.message = number++;
            ASSERT_TRUE(timeline.post(event));
            const auto later = std::upper_bound(
                model.begin(), model.end(), event,
                [](const SoundEvent& a, const SoundEvent& b) { return a.time < b.time; });
            model.insert(later, event);
        }
        timeline.request(now, frame, 256);
        for (std::int64_t block = frame; block < frame + 256; block += kBlock)
            while (const auto given = timeline.next(block, kBlock)) {
                ASSERT_FALSE(model.empty());
                ASSERT_EQ(given->message, model.front().message);
                ASSERT_LT(given->time, now) << "not before its instant";
                ASSERT_LT(now - given->time, 60'000'000);
                model.erase(model.begin());
                ++checked;
            }
    }
    EXPECT_GT(checked, 5000U);
    EXPECT_EQ(timeline.posted(), unplanned);
    EXPECT_LE(unplanned - timeline.givenOut(), model.size());
}

/// A thread that is late by up to 12 ms sends what is due now; keys played by hand do not count.
TEST(PlannedEvents, AreInTimeAgainAfterSomeCameTooLate) {
    MessageTimeline timeline(48000);
    std::int64_t now = 1'000'000'000;
    std::int64_t frame = 0;
    const auto delayOf = [&](std::int64_t late, bool planned) {
        SoundEvent event;
        event.planned = planned;
        event.time = now - late;
        timeline.post(event);
        const std::int64_t time = event.time;
        std::int64_t heard = 0;
        for (int period = 0; period < 20; ++period, now += 5'333'333, frame += 256) {
            timeline.request(now, frame, 256);
            for (std::int64_t block = frame; block < frame + 256; block += 64)
                while (timeline.next(block, 64))
                    heard = now + (block - frame) * 1'000'000 / 48 - time;
        }
        return static_cast<double>(heard) / 1e6;
    };
    for (int i = 0; i < 100; ++i)
        delayOf(100'000, false);
    const double usual = delayOf(100'000, false);
    delayOf(12'000'000, false);
    EXPECT_NEAR(delayOf(100'000, false), usual, 1.4);
    for (int i = 0; i < 3; ++i)
        delayOf(12'000'000, true);
    const double longer = delayOf(100'000, true);
    EXPECT_LT(longer, usual + 18);
    for (const std::int64_t late : {1, 4, 8, 12})
        EXPECT_NEAR(delayOf(late * 1'000'000, true), longer, 1.4) << late;
}
