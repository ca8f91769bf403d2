#pragma once

#include "composer/score/bar_view.h"

/// What the composer keeps from one opening of its window to the next. The main window owns it.
struct ComposerState {
    /// How the staff shows the melodies.
    score::Notation staff = score::kWithoutBars;
};
