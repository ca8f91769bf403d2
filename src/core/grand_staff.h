#pragma once

#include "core/pitch.h"

/// The grand staff: a stave with the treble (G) clef above one with the bass (F) clef. A position
/// counts half staff spaces from a stave's bottom line; steps are those of `pitch`.
namespace grand_staff {

constexpr int kTopLine = 8;

/// The line of each clef's note: the Sol above middle C and the Fa below it.
constexpr int kGLine = 2;
constexpr int kFLine = 6;

/// The step on the bottom line of each stave.
constexpr int kTrebleBottomStep = pitch::kMiddleCStep + 4 - kGLine;
constexpr int kBassBottomStep = pitch::kMiddleCStep - 4 - kFLine;

/// A note two octaves lower stands so much lower on the bass stave than on the treble stave.
constexpr int kBassShift = 2 * pitch::kDegrees - (kTrebleBottomStep - kBassBottomStep);

}  // namespace grand_staff
