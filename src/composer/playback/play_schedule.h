#pragma once

#include "platform/runtime.h"

#include <cstdint>

/// The instants at which a melody's notes are due: the sum of their whole milliseconds.
///
/// It answers when a wait is to end; the player waits. A wait ends where the one before was due to
/// end plus its own length, so that lateness does not add up. A note always sounds in full; what it
/// came late is taken from the silence and the gap behind it. When an entry comes later than
/// `kTolerance`, because a handler took long, the schedule starts afresh from there instead of
/// catching up. The tolerance is below the gap between two entries, so that a gap always
/// remains.
class PlaySchedule {
public:
    static constexpr Instant kTolerance = std::chrono::milliseconds(20);

    explicit PlaySchedule(const Runtime& runtime) : runtime_(runtime), due_(runtime.now()) {}

    /// When the next note is due.
    Instant due() const { return due_; }

    /// An entry begins, now or a little late.
    void beginEntry();

    /// The end of a note that begins now.
    Instant endOfSound(std::int64_t ms);

    /// The end of a time in which nothing sounds.
    Instant endOfPause(std::int64_t ms);

private:
    const Runtime& runtime_;
    Instant due_;
};
