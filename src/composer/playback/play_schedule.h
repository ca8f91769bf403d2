#pragma once

#include "platform/runtime.h"

#include <cstdint>

/// The instants at which a melody's notes are due: the sum of their whole milliseconds.
///
/// Every wait ends where the one before was due to end plus its own length, so that lateness does
/// not add up. A note always sounds in full; what it came late is taken from the silence and the
/// gap behind it. When an entry comes later than `kTolerance`, because a handler took its time, the
/// schedule starts afresh from there instead of hurrying after it. The tolerance is below the gap
/// between two entries, so that a gap always remains.
class PlaySchedule {
public:
    static constexpr Instant kTolerance = std::chrono::milliseconds(20);

    explicit PlaySchedule(Runtime& runtime) : runtime_(runtime), due_(runtime.now()) {}

    /// When the next note is due.
    Instant due() const { return due_; }

    /// An entry begins, now or a little late.
    void beginEntry();

    /// Waits while a note sounds.
    void sound(std::int64_t ms);

    /// Waits while nothing sounds.
    void pause(std::int64_t ms);

private:
    Runtime& runtime_;
    Instant due_;
};
