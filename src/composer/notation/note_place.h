#pragma once

#include "core/grand_staff.h"

/// Where notes stand on the grand staff. A position counts half staff spaces from a staff's bottom
/// line.
namespace notation {

enum class Staff { Treble, Bass };

/// The step of a staff's bottom line.
constexpr int bottomStep(Staff staff) {
    return staff == Staff::Treble ? grand_staff::kTrebleBottomStep : grand_staff::kBassBottomStep;
}

/// A sharp stands where its natural does.
struct Head {
    int position = 0;
    bool sharp = false;
};

/// Of a note 36..95.
Head headOf(int noteNumber, Staff staff);

/// The natural note nearest to a position; beyond the ends of the range the last one.
int noteAt(Staff staff, double position);

/// The positions of the highest and the lowest note of the range.
constexpr int kHighestPosition = pitch::kHighestStep - grand_staff::kTrebleBottomStep;
constexpr int kLowestPosition = pitch::kLowestStep - grand_staff::kBassBottomStep;

}  // namespace notation
