#pragma once

#include "eartraining/chord/chord_exercise.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/interval/interval_exercise.h"
#include "eartraining/pitch/pitch_exercise.h"

#include <vector>

/// Every exercise of ear training. A new one is a member here and a panel in `makePanels`.
struct Exercises {
    Exercises(ExerciseContext& context, EarTrainingState& state)
        : pitch(context), interval(context, pitch), chord(context, state.chord) {}

    PitchExercise pitch;
    IntervalExercise interval;
    ChordExercise chord;

    /// The window opens on the first.
    const std::vector<EarExercise*> all{&pitch, &interval, &chord};
};
