#pragma once

#include "composer/melody/play_range.h"

#include <algorithm>
#include <cstdint>

/// Where the user is while going through the melody entry by entry.
struct StepMode {
    enum class Direction { Backward, Forward };

    bool active = false;
    bool frameOpen = false;  ///< the edit frame for the entry at `index` is shown, until "Play"
    std::int16_t index = 0;  ///< -1 after the first entry was deleted
    bool outside = false;    ///< the entry was chosen by itself where the range did not have it

    /// One step within the range, wrapping at its ends. The first step starts before the range.
    void step(Direction direction, const PlayRange& range) {
        if (!active) {
            active = true;
            index = static_cast<std::int16_t>(range.start() - 1);
        } else if (isOutside(range)) {
            // A step goes back into the range, to the end that it wraps to.
            index = direction == Direction::Backward ? range.start() : range.end();
        }
        outside = false;
        if (direction == Direction::Backward)
            index = index > range.start() ? static_cast<std::int16_t>(index - 1) : range.end();
        else
            index = index != range.end() ? static_cast<std::int16_t>(index + 1) : range.start();
    }

    /// Goes to any entry of the melody.
    void goTo(int entry, const PlayRange& range) {
        active = true;
        index = static_cast<std::int16_t>(entry);
        outside = index < range.start() || index > range.end();
    }

    /// The entry was chosen outside of the range, which has not reached it since.
    bool isOutside(const PlayRange& range) const {
        return outside && (index < range.start() || index > range.end());
    }

    /// Ends step mode and hides the edit frame.
    void leave() { active = frameOpen = false; }

    /// Stays with the entry when `inserted` entries took the place of `removed` ones at `position`.
    /// If it went, the one before it is next. Whether the entry is still there.
    bool follow(int position, int removed, int inserted) {
        const int offset = index - position;
        if (offset < 0)
            return true;
        const bool stays = offset >= removed || inserted > 0;
        int moved = position - 1;
        if (offset >= removed)
            moved = index + inserted - removed;
        else if (inserted > 0)
            moved = position + std::min(offset, inserted - 1);
        index = static_cast<std::int16_t>(moved);
        return stays;
    }

    /// Brings the index into a melody of `count` entries; an empty one has nothing to step through.
    void keepWithin(int count) {
        index = static_cast<std::int16_t>(std::clamp<int>(index, 0, std::max(count - 1, 0)));
        if (count == 0)
            leave();
    }
};
