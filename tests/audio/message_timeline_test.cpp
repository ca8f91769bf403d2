#include "audio/message_timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <utility>
#include <vector>

namespace {

constexpr int kBlock = 64;
constexpr double kNanos = 1e9;
constexpr double kRate = 44100;

SoundEvent noteAt(std::int64_t time, std::uint32_t message = 0) {
    SoundEvent event;
    event.time = time;
    event.message = message;
    return event;
}

/// A sound system that fills its buffers at once and then asks for periods by a clock that is a
/// little off, early and late by turns.
struct FabricatedStream {
    int period;
    int lead;  ///< frames that it asks for at once
    double rateError;
    double jitter;  ///< seconds
    std::mt19937 random{7};
    std::int64_t frame = 0;
    std::int64_t started = 0;  ///< the frame at which it last started, and when
    double start = 5e12;

    double due(std::int64_t of) const {
        return start + static_cast<double>(of - started - lead) * kNanos / kRate * (1 + rateError);
    }
    std::int64_t now() const { return static_cast<std::int64_t>(std::max(start, due(frame))); }
    /// Its buffers run empty.
    void pause(double seconds) {
        start = static_cast<double>(now()) + seconds * kNanos;
        started = frame;
    }

    /// Runs for a while and posts some events; answers how long after its arrival each was given
    /// out, which is at the undisturbed request for its frame.
    std::vector<double> run(MessageTimeline& timeline, double seconds, int count) {
        std::uniform_real_distribution<double> off(-jitter, jitter);
        std::vector<double> delays;
        std::vector<SoundEvent> events;
        for (std::int64_t time = now(); count > 0; --count)
            events.push_back(noteAt(time += random() % 4 ? random() % 60'000'000 : 0, random()));
        std::size_t posted = 0;
        const auto end = frame + static_cast<std::int64_t>(seconds * kRate);
        for (; frame < end; frame += period) {
            const auto at = std::max(static_cast<std::int64_t>(start),
                                     static_cast<std::int64_t>(due(frame) + off(random) * kNanos));
            while (posted < events.size() && events[posted].time < at)
                EXPECT_TRUE(timeline.post(events[posted++]));
            timeline.request(at, frame, period);
            for (std::int64_t block = frame; block < frame + period; block += kBlock)
                while (const auto event = timeline.next(block, kBlock)) {
                    EXPECT_EQ(event->message, events[delays.size()].message);
                    delays.push_back((due(block) - static_cast<double>(event->time)) / kNanos);
                }
        }
        EXPECT_EQ(delays.size(), events.size());
        return delays;
    }
};

}  // namespace

TEST(MessageTimeline, TheDelayIsConstantWhateverTheRequestsDo) {
    std::mt19937 random(2);
    for (int i = 0; i < 40; ++i) {
        const int period = kBlock << random() % 5;
        FabricatedStream stream{.period = period,
                                .lead = static_cast<int>(random() % 5) * period,
                                .rateError = (static_cast<int>(random() % 21) - 10) * 1e-4,
                                .jitter = random() % 5 * 5e-4};
        SCOPED_TRACE(i);
        MessageTimeline timeline(kRate);
        const auto check = [&](double& usual) {
            const auto delays = stream.run(timeline, 10, 200);
            const auto [least, most] = std::minmax_element(delays.begin(), delays.end());
            // A block may be lost in the rounding.
            EXPECT_LT(*most - *least, kBlock / kRate + 0.0012);
            EXPECT_GT(*least, 0);
            EXPECT_LT(*least, period / kRate + stream.jitter + 0.0035);
            EXPECT_NEAR(*least, usual > 0 ? usual : *least, kBlock / kRate + 0.0012);
            usual = *least;
        };
        double usual = 0;
        stream.run(timeline, 20, 0);
        check(usual);
        stream.pause(600);
        timeline.restart();
        check(usual);
        stream.pause(0.5);  // nobody said that the stream had stopped
        stream.run(timeline, 5, 0);
        check(usual);
    }
}

TEST(MessageTimeline, KeepsTheOrderAndSilencesWhatItLost) {
    constexpr std::uint32_t kSilence = 1'000'000;
    MessageTimeline timeline(kRate);
    timeline.request(static_cast<std::int64_t>(kNanos), 0, kBlock);
    std::deque<std::uint32_t> model;
    bool lost = false;
    std::mt19937 random(1);
    for (std::uint32_t i = 0; i < 60'000; ++i) {
        // It fills and empties by turns.
        if (random() % 10 < (i / 6000 % 2 ? 2U : 8U)) {
            const bool taken = timeline.post(noteAt(0, i));
            EXPECT_TRUE(taken || model.size() + 2 > EventQueue::kCapacity);
            if (taken && lost)
                model.push_back(kSilence);
            if (taken)
                model.push_back(i);
            lost = !taken;
        } else {
            const auto event = timeline.next(1 << 20, kBlock);
            // If nothing follows, the silence comes by itself, and once.
            if (model.empty() && std::exchange(lost, false))
                model.push_back(kSilence);
            ASSERT_EQ(event.has_value(), !model.empty());
            if (!event)
                continue;
            const bool isReset = event->kind == SoundEvent::Kind::Reset;
            ASSERT_EQ(isReset ? kSilence : event->message, model.front());
            model.pop_front();
        }
        ASSERT_EQ(timeline.posted() - timeline.givenOut(), model.size());
        ASSERT_EQ(timeline.empty(), model.empty());
    }
}
