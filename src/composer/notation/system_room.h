#pragma once

#include "composer/notation/system_layout.h"

#include <vector>

/// What stands outside the staves, and the room that a system takes on the page.
namespace notation {

/// Puts the brackets of triplets and the signs of durations clear of the notes.
void placeOutside(System& system, const std::vector<Span>& triplets);

/// Sets the system's room from the ink of all that is placed; `everyNote` leaves room for the
/// highest and the lowest note of the range as well.
void makeRoom(System& system, bool everyNote);

}  // namespace notation
