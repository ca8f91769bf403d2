#pragma once

#include "audio/event_queue.h"
#include "audio/stream_clock.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

/// Carries events from the user-interface thread to the audio thread and gives each out at a
/// constant delay after its instant, a longer one for what was planned, in the order of their
/// instants and of their arrival where these are equal. Without locks or allocation.
class MessageTimeline {
public:
    explicit MessageTimeline(double framesPerSecond) : clock_(framesPerSecond) {}

    /// Consumer, or while no stream runs: forgets what is known of the stream.
    void setRate(double framesPerSecond) { clock_ = StreamClock(framesPerSecond); }

    /// Producer. False if the audio thread is so far behind that there is no room: the event is
    /// dropped, and a Reset takes the place of everything dropped so that no note hangs.
    bool post(const SoundEvent& event);

    /// Producer: the number of events posted so far that were not planned, and how many of them
    /// were given out.
    std::uint64_t posted() const { return posted_; }
    std::uint64_t givenOut() const { return givenOut_.load(); }

    /// Consumer: as in StreamClock.
    void restart() { clock_.restart(); }
    void resize() { clock_.resize(); }
    void begin(std::int64_t now) { clock_.begin(now); }
    void request(std::int64_t now, std::int64_t frame, int count);
    void heard(std::int64_t instant, std::int64_t frame) { clock_.heard(instant, frame); }

    /// Consumer: the next event that belongs before the block of `blockFrames` from `frame`.
    std::optional<SoundEvent> next(std::int64_t frame, int blockFrames);

    /// Consumer: whether something that was planned is waiting.
    bool hasPlanned();

    bool empty() const { return waiting() == 0 && queue_.front() == nullptr; }

    /// From an event's instant until it is heard, in nanoseconds; any thread.
    std::int64_t delay() const { return delay_.load(); }

private:
    void takeFromQueue();
    void insert(const SoundEvent& event);
    void dropPlannedAfter(std::int64_t time);
    std::size_t waiting() const { return end_ - begin_; }

    EventQueue queue_;
    std::uint64_t posted_ = 0;
    std::atomic<std::uint64_t> givenOut_ = 0;
    /// What the consumer took from the queue and has not given out, in the order of the instants.
    std::array<SoundEvent, EventQueue::kCapacity> waiting_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    StreamClock clock_;
    std::atomic<std::int64_t> delay_ = 0;
    std::atomic<bool> dropped_ = false;
};
