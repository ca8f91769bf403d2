#pragma once

#include "composer/score/bar_view.h"

/// What the composer keeps from one opening of its window to the next. The main window owns it.
struct ComposerState {
    /// How the staff shows the melodies.
    score::Notation staff = score::kWithoutBars;

    bool silent = false;           ///< nothing is announced but what is asked for
    bool insertsDirectly = false;  ///< each press of a piano's key inserts its note
};
