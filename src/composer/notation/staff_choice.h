#pragma once

#include "composer/notation/note_place.h"

#include <optional>
#include <vector>

namespace notation {

/// An entry whose staff is to be chosen.
struct StaffQuestion {
    int noteNumber = 0;   ///< any number outside of 36..95 is a rest
    bool joined = false;  ///< a beam or a triplet joins it to the entry before
};

/// The staff of each entry of a stretch of the melody: a phrase stays on one staff while two ledger
/// lines are enough for it, and changes where that saves more ledger lines than a change is worth:
/// most readily after a rest, rarely under a beam. A rest
/// stands where the note before it does. `before` is the staff of the entry before the stretch.
std::vector<Staff> chooseStaves(const std::vector<StaffQuestion>& entries,
                                std::optional<Staff> before);

}  // namespace notation
