#include "audio/message_timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr double kRate = 48000;
constexpr int kPeriod = 256;
constexpr int kBlock = 64;
constexpr double kNanos = 1e9;

SoundEvent noteAt(std::int64_t time, std::uint32_t message = 0) {
    SoundEvent event;
    event.time = time;
    event.message = message;
    return event;
}

/// A sound system that asks for periods by a clock that is a little off, early and late by turns.
class FabricatedStream {
public:
    FabricatedStream(double rateError, double jitterSeconds)
        : frameNanos_(kNanos / kRate * (1 + rateError)), jitter_(-jitterSeconds, jitterSeconds) {}

    struct Heard {
        std::uint32_t message;
        double delay;  // seconds from arrival to the undisturbed request for its frame
    };

    /// Runs for a while; the events must be in the order of their times.
    std::vector<Heard> run(MessageTimeline& timeline, double seconds,
                           const std::vector<SoundEvent>& events) {
        std::vector<Heard> heard;
        std::size_t next = 0;
        const auto end = frame_ + static_cast<std::int64_t>(seconds * kRate);
        for (; frame_ < end; frame_ += kPeriod) {
            const double due = start_ + static_cast<double>(frame_) * frameNanos_;
            const auto now = static_cast<std::int64_t>(due + jitter_(random_) * kNanos);
            while (next < events.size() && events[next].time < now)
                timeline.post(events[next++]);
            timeline.request(now, frame_, kPeriod);
            for (std::int64_t block = frame_; block < frame_ + kPeriod; block += kBlock)
                while (const auto event = timeline.next(block, kBlock)) {
                    const double at = start_ + static_cast<double>(block) * frameNanos_;
                    heard.push_back(
                        {event->message, (at - static_cast<double>(event->time)) / kNanos});
                }
        }
        return heard;
    }

    std::int64_t now() const {
        return static_cast<std::int64_t>(start_ + static_cast<double>(frame_) * frameNanos_);
    }
    void pause(double seconds) { start_ += seconds * kNanos; }

private:
    double frameNanos_;
    double start_ = 5e12;
    std::int64_t frame_ = 0;
    std::mt19937 random_{7};
    std::uniform_real_distribution<double> jitter_;
};

std::vector<SoundEvent> someEvents(std::int64_t from, int count) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int64_t> gap(1'000'000, 60'000'000);
    std::vector<SoundEvent> events;
    for (int i = 0; i < count; ++i)
        events.push_back(noteAt(from += gap(random), static_cast<std::uint32_t>(i)));
    return events;
}

double spread(const std::vector<FabricatedStream::Heard>& heard) {
    const auto [low, high] = std::minmax_element(heard.begin(), heard.end(),
                                                 [](auto a, auto b) { return a.delay < b.delay; });
    return high->delay - low->delay;
}

}  // namespace

TEST(MessageTimeline, DelayIsConstantWhateverTheRequestsDo) {
    for (const auto& [rateError, jitter] : {std::pair{0.0, 0.0}, {2e-4, 0.002}, {-1e-3, 0.001}}) {
        SCOPED_TRACE(jitter);
        MessageTimeline timeline(kRate);
        FabricatedStream stream(rateError, jitter);
        stream.run(timeline, 20, {});
        const auto heard = stream.run(timeline, 10, someEvents(stream.now(), 200));

        ASSERT_EQ(heard.size(), 200u);
        for (std::size_t i = 0; i < heard.size(); ++i)
            EXPECT_EQ(heard[i].message, i);
        // A block lasts 1.33 ms, which the rounding may cost; requests come 2 ms early or late.
        EXPECT_LT(spread(heard), kBlock / kRate + 0.0006);
        EXPECT_LT(heard.front().delay, kPeriod / kRate + jitter + 0.003);
        EXPECT_GT(heard.front().delay, 0);
    }
}

TEST(MessageTimeline, DelayIsTheSameAfterRestsAndDropouts) {
    MessageTimeline timeline(kRate);
    FabricatedStream stream(1e-4, 0.0005);
    stream.run(timeline, 20, {});
    const double before = stream.run(timeline, 5, someEvents(stream.now(), 60)).back().delay;

    stream.pause(600);
    timeline.restart();
    const auto first = stream.run(timeline, 5, {noteAt(stream.now() - 100'000)});
    ASSERT_EQ(first.size(), 1u);
    EXPECT_NEAR(first[0].delay, before, 0.003);

    stream.pause(0.5);  // nobody said that the stream had stopped
    stream.run(timeline, 5, {});
    const auto after = stream.run(timeline, 5, someEvents(stream.now(), 60));
    ASSERT_EQ(after.size(), 60u);
    EXPECT_NEAR(after.back().delay, before, 0.002);
    EXPECT_LT(spread(after), kBlock / kRate + 0.0006);
}

TEST(MessageTimeline, AFullQueueKeepsTheOrderAndSilencesWhatItLost) {
    MessageTimeline timeline(kRate);
    std::uint32_t taken = 0;
    while (timeline.post(noteAt(0, taken)))
        ++taken;
    EXPECT_EQ(taken, EventQueue::kCapacity);
    EXPECT_FALSE(timeline.post(noteAt(0, taken)));

    timeline.request(kNanos, 0, kPeriod);
    const std::int64_t far = 1 << 20;
    for (std::uint32_t i = 0; i < 10; ++i)
        EXPECT_EQ(timeline.next(far, kBlock)->message, i);
    EXPECT_TRUE(timeline.post(noteAt(0, 9999)));
    for (std::uint32_t i = 10; i < taken; ++i)
        EXPECT_EQ(timeline.next(far, kBlock)->message, i);
    EXPECT_EQ(timeline.next(far, kBlock)->kind, SoundEvent::Kind::Reset);
    EXPECT_EQ(timeline.next(far, kBlock)->message, 9999u);
    EXPECT_FALSE(timeline.next(far, kBlock));

    // If nothing follows, the silence comes by itself, and once.
    while (timeline.post(noteAt(0))) {
    }
    for (std::size_t i = 0; i < EventQueue::kCapacity; ++i)
        EXPECT_EQ(timeline.next(far, kBlock)->kind, SoundEvent::Kind::Message);
    EXPECT_EQ(timeline.next(far, kBlock)->kind, SoundEvent::Kind::Reset);
    EXPECT_FALSE(timeline.next(far, kBlock));
}
