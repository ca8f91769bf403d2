#pragma once

#include "audio/event_queue.h"
#include "audio/stream_clock.h"

#include <atomic>
#include <cstdint>
#include <optional>

/// Carries events from the user-interface thread to the audio thread and gives each out at a
/// constant delay after its arrival, in the order of arrival.
class MessageTimeline {
public:
    explicit MessageTimeline(double framesPerSecond) : clock_(framesPerSecond) {}

    /// Only while no stream runs.
    void setRate(double framesPerSecond) { clock_ = StreamClock(framesPerSecond); }

    /// Producer. False if the audio thread is so far behind that there is no room: the event is
    /// dropped, and a Reset takes the place of everything dropped so that no note hangs.
    bool post(const SoundEvent& event);

    /// Producer: the number of events posted so far, and how many of them were given out.
    std::uint64_t posted() const { return queue_.pushed(); }
    std::uint64_t givenOut() const { return queue_.popped(); }

    /// Consumer: as in StreamClock.
    void restart() { clock_.restart(); }
    void request(std::int64_t now, std::int64_t frame, int count);

    /// Consumer: the next event that belongs before the block of `blockFrames` from `frame`.
    std::optional<SoundEvent> next(std::int64_t frame, int blockFrames);

    bool empty() const { return queue_.front() == nullptr; }

private:
    EventQueue queue_;
    StreamClock clock_;
    std::atomic<bool> dropped_ = false;
};
