#pragma once

#include "reading/staff_step.h"

/// Where the steps stand on the drawn staff. A place counts half staff spaces from the top of the
/// drawing; both systems have the same staff space. The ruler's twips are uneven; the two
/// functions between them and places let the middle of each band fall on its step.
namespace staff_layout {

constexpr int kMargin = 2;
constexpr int kGap = 5;  ///< from the lowest treble step to the highest bass step
constexpr int kLowestTreblePlace = kMargin + staff_step::kTrebleHighest - staff_step::kTrebleLowest;
constexpr int kHighestBassPlace = kLowestTreblePlace + kGap;

/// The height of the whole drawing.
constexpr int kHeight =
    kHighestBassPlace + staff_step::kBassHighest - staff_step::kBassLowest + kMargin;

/// The place of a step that carries a note.
constexpr int placeOf(int step) {
    return staff_step::isTreble(step) ? kMargin + staff_step::kTrebleHighest - step
                                      : kHighestBassPlace + staff_step::kBassHighest - step;
}

/// Half staff spaces from the bottom line of the step's own system: even on a line, 0 to 8 inside.
constexpr int positionOnStave(int step) {
    return step - (staff_step::isTreble(step) ? staff_step::kTrebleBottomLine
                                              : staff_step::kBassBottomLine);
}

/// The ruler's twips at a place. They rise steadily, also beyond the ends.
double twipsAt(double place);

/// The drawing at a size: pixels for places.
struct Scale {
    double top = 0;        ///< y of place 0
    double halfSpace = 1;  ///< height of half a staff space, above 0

    constexpr double y(double place) const { return top + place * halfSpace; }
    constexpr double place(double y) const { return (y - top) / halfSpace; }
};

}  // namespace staff_layout
