#pragma once

#include "composer/melody/play_range.h"

#include <cstdint>

/// Where the user is while going through the melody entry by entry.
struct StepMode {
    enum class Direction { Backward, Forward };

    bool active = false;
    std::int16_t index = 0;  ///< -1 after the first entry was deleted

    /// One step within the range, wrapping at its ends. The first step starts before the range.
    void step(Direction direction, const PlayRange& range) {
        if (!active) {
            active = true;
            index = static_cast<std::int16_t>(range.start() - 1);
        }
        if (direction == Direction::Backward)
            index = index > range.start() ? static_cast<std::int16_t>(index - 1) : range.end();
        else
            index = index != range.end() ? static_cast<std::int16_t>(index + 1) : range.start();
    }
};
