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
        const auto what = random() % 4;
        SoundEvent event;
        event.time = now;
        if (what < 2) {
            event.planned = what == 0;
            event.time += event.planned ? static_cast<std::int64_t>(random() % 400'000'000) : 0;
            event.message = number++;
            unplanned += what;
            ASSERT_TRUE(timeline.post(event));
            model.insert(std::ranges::upper_bound(model, event.time, {}, &SoundEvent::time), event);
        } else if (random() % 40 == 0) {
            event.kind = SoundEvent::Kind::CancelPlanned;
            timeline.post(event);
            std::erase_if(model, [now](const SoundEvent& waiting) {
                return waiting.planned && waiting.time > now;
            });
        }
        timeline.request(now, frame, 256);
        for (std::int64_t block = frame; block < frame + 256; block += kBlock)
            while (const auto given = timeline.next(block, kBlock)) {
                ASSERT_FALSE(model.empty());
                ASSERT_EQ(given->message, model.front().message);
                ASSERT_LT(given->time, now) << "not before its instant";
                ASSERT_LT(now - given->time, 160'000'000);
                model.erase(model.begin());
                ++checked;
            }
    }
    EXPECT_GT(checked, 5000U);
    EXPECT_EQ(timeline.posted(), unplanned);
    EXPECT_LE(unplanned - timeline.givenOut(), model.size());
}

/// Whatever a late thread plans, and however far ahead the stream asks, is heard in time; what is
/// sent by hand keeps its short delay where nothing planned waits before it.
TEST(PlannedEvents, AreHeardInTimeByLateThreadsAndGrownBuffers) {
    constexpr std::int64_t kPeriod = 5'333'333;
    for (const auto& [firstLead, told] :
         {std::pair(0, false), {1, false}, {5, false}, {1, true}, {5, true}}) {
        int lead = firstLead;
        MessageTimeline timeline(48000);
        std::int64_t now = 1'000'000'000;
        std::int64_t frame = 0;
        // When an event is heard: the frames of the lead were asked for at once.
        const auto delayOf = [&](std::int64_t late, bool planned) {
            SoundEvent event;
            event.planned = planned;
            event.time = now - late;
            timeline.post(event);
            std::int64_t heard = 0;
            for (int period = 0; period < 40; ++period, now += kPeriod, frame += 256) {
                if (told)
                    timeline.heard(now + lead * kPeriod, frame);
                timeline.request(now, frame, 256);
                for (std::int64_t block = frame; block < frame + 256; block += 64)
                    while (timeline.next(block, 64))
                        heard =
                            now + lead * kPeriod + (block - frame) * 1'000'000 / 48 - event.time;
            }
            return static_cast<double>(heard) / 1e6;
        };
        for (; frame < lead * 256; frame += 256)
            timeline.request(now, frame, 256);
        for (int i = 0; i < 100; ++i)
            delayOf(100'000, false);
        EXPECT_LT(delayOf(100'000, false), 14 + lead * 5.4);
        for (const std::int64_t late : {0, 20, 50, 80})
            EXPECT_NEAR(delayOf(late * 1'000'000, true), 120, 1.4) << late << ' ' << lead;
        EXPECT_NEAR(static_cast<double>(timeline.delay()) / 1e6, 120, 1.4);
        if (!told)
            continue;
        // The buffers grow as they say: what is asked for at once is heard when it would have been.
        timeline.resize();
        for (int period = 0; period < 5; ++period, ++lead, frame += 256)
            timeline.request(now, frame, 256);
        for (int i = 0; i < 40; ++i)
            EXPECT_NEAR(delayOf(0, true), 120, 1.4) << i << ' ' << lead;
        // They change, and lose some of what they hold, without another word.
        for (const int after : {lead + 4, 9, 8, 6}) {
            lead = after;
            for (int i = 0; i < 25; ++i)
                delayOf(0, true);
            EXPECT_NEAR(delayOf(0, true), 120, 1.4) << lead;
        }
    }
}
