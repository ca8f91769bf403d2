#pragma once

#include "core/pitch.h"
#include "eartraining/exercise_code.h"

#include <array>

/// What ear training keeps from one opening of its window to the next. The main window owns it and
/// asks for an exercise before it opens the window.
class EarTrainingState {
public:
    void request(ExerciseCode exercise) {
        requested_ = exercise;
        alwaysChord_ = alwaysChord_ || exercise == ExerciseCode::Chord;
    }
    void forgetRequest() { requested_ = ExerciseCode::Pitch; }

    /// The exercise that the window opens on.
    ExerciseCode requested() const { return alwaysChord_ ? ExerciseCode::Chord : requested_; }

    /// The notes of the current chord from the root up; zeros before the first.
    std::array<pitch::NoteNumber, 3> chord{};

private:
    ExerciseCode requested_ = ExerciseCode::Pitch;
    /// A request for the chord exercise is never cleared, unlike any other: from then on every
    /// opening is on the chord exercise, whatever was asked for, and the others are chosen in the
    /// window's own menu. This is intended: a user who has chosen chords once goes on with them.
    bool alwaysChord_ = false;
};
