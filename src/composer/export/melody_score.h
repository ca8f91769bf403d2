#pragma once

#include "platform/wave_renderer.h"

#include <cstdint>
#include <vector>

class Melody;

/// What playing a melody from its beginning to its end sends to the MIDI output, without playing
/// it: the same messages at the same milliseconds.
struct MelodyScore {
    std::vector<TimedMessage> messages;  ///< the instrument first
    std::int64_t endMs = 0;              ///< with the gap behind the last entry
    int entries = 0;  ///< that are played; fewer than the melody has if one is too short to sound
};

/// `tempo` in quarter notes per minute, above 0; `program` 0..127.
MelodyScore scoreOf(const Melody& melody, int tempo, int program);
