#pragma once

#include "core/pitch.h"
#include "eartraining/ear_exercise.h"

#include <array>

/// What ear training keeps from one opening of its window to the next. The main window owns it and
/// writes the requests before it opens the window.
struct EarTrainingState {
    EarExercise exercise = EarExercise::Pitch;
    /// The window is to open on the interval exercise; cleared when it closes.
    bool intervalRequested = false;
    /// The window is to open on the chord exercise, this time and ever after.
    bool chordRequested = false;

    /// The notes of the current chord from the root up; zeros before the first.
    std::array<pitch::NoteNumber, 3> chord{};
};
