#pragma once

#include "core/pitch.h"

class EarExercise;
class Score;
struct EarPrompt;

/// What the ear-training window shows: what all exercises have in common, and each exercise's
/// panel.
class EarTrainingView {
public:
    virtual ~EarTrainingView() = default;

    virtual void showPrompt(const EarPrompt& prompt) = 0;
    virtual void showScore(const Score& score) = 0;
    /// An answer has been judged and is in the score.
    virtual void announceVerdict(const Score& score) = 0;

    /// The state that an exercise's panel shows has changed.
    virtual void showExercise(const EarExercise& exercise) = 0;
    /// The exercise's start button is to have the focus.
    virtual void focusStart(const EarExercise& exercise) = 0;

    virtual void showKey(pitch::NoteIndex key, bool pressed) = 0;
    virtual void showRangeMark(pitch::NoteIndex key, bool on) = 0;
    virtual void clearRangeMarks() = 0;

    virtual void showClose(bool on) = 0;
    virtual void enableExerciseMenu(bool on) = 0;
};
