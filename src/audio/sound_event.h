#pragma once

#include <cstdint>

class Tune;
struct Wave;

/// One instruction from the user-interface thread to the audio thread. Plain data, so that it is
/// copied through the queue without allocating; what the pointers name is kept alive by the sender.
struct SoundEvent {
    /// CancelPlanned takes back the planned events whose instant is after its own.
    enum class Kind : std::uint8_t {
        Message,
        Reset,
        StartTune,
        StopTune,
        StartWave,
        CancelPlanned
    };

    Kind kind = Kind::Message;
    std::uint32_t message = 0;   ///< packed short message, for Message
    bool planned = false;        ///< may be posted before or after its instant
    std::int64_t time = 0;       ///< its instant, nanoseconds of the steady clock
    Tune* tune = nullptr;        ///< for StartTune
    const Wave* wave = nullptr;  ///< for StartWave
};
