#pragma once

#include "composer/notation/note_place.h"
#include "composer/notation/staff_entry.h"
#include "composer/score/bar_view.h"

#include <functional>
#include <optional>

namespace notation {

/// The melody that is laid out, and how it is written: without a metre there are no bars.
struct Source {
    std::function<int()> count;
    std::function<staff_entry::Entry(int)> entryAt;  ///< 0..count - 1
    score::Notation notation = score::kWithoutBars;
};

/// A place among the notes of a bar.
struct BarPlace {
    int number = 0;  ///< of the bar, from 0
    int entry = 0;   ///< in which the bar begins
    int into = 0;    ///< so many units of it stand before the bar
    int notes = 0;   ///< of the bar that are before the place

    bool operator==(const BarPlace&) const = default;
};

/// All that a system depends on of those before it.
struct SystemStart {
    int entry = 0;
    double onset = 0;                  ///< in quarter notes from the start of the melody
    std::optional<Staff> staff = {};   ///< of the entry before
    std::optional<BarPlace> bar = {};  ///< nothing where there are no bars

    bool operator==(const SystemStart&) const = default;
};

/// Where a melody begins.
SystemStart startOf(const Source& source);

}  // namespace notation
