#pragma once

#include <cstdint>

class Tune;
struct Wave;

/// One instruction from the user-interface thread to the audio thread. Plain data, so that it is
/// copied through the queue without allocating; what the pointers name is kept alive by the sender.
struct SoundEvent {
    enum class Kind : std::uint8_t { Message, Reset, StartTune, StopTune, StartWave };

    Kind kind = Kind::Message;
    std::uint32_t message = 0;   ///< packed short message, for Message
    std::int64_t time = 0;       ///< arrival, nanoseconds of the steady clock
    Tune* tune = nullptr;        ///< for StartTune
    const Wave* wave = nullptr;  ///< for StartWave
};
