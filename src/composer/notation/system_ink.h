#pragma once

#include "composer/notation/system_layout.h"

/// How far the ink of what a system holds reaches over and under the staff that it stands on.
namespace notation {

engraving::Reach reachOf(const Symbol& symbol);
engraving::Reach reachOf(const System& system, const ArticulationMark& mark);
engraving::Reach reachOf(const TripletBracket& bracket);
engraving::Reach reachOf(const DurationSign& sign);

/// Of all ink on a staff between two places along it, in staff spaces, and of the stave itself.
engraving::Reach reachBetween(const System& system, Staff staff, double left, double right);

}  // namespace notation
