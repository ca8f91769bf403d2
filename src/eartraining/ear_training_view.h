#pragma once

#include "core/pitch.h"
#include "eartraining/ear_exercise.h"
#include "eartraining/ear_prompt.h"

class Score;

/// The controls that come and go.
enum class EarControl {
    cmdEsci,
    cmdReimposta,
    IntoStart,
    FrmIntervalli,
    frmRacc,
    ComdRacStart,
    cmdRes,
};

/// What the ear training shows; its window implements it.
class EarTrainingView {
public:
    virtual ~EarTrainingView() = default;

    virtual void showPrompt(EarPrompt prompt) = 0;
    virtual void showScore(const Score& score) = 0;
    /// An answer has been judged and is in the score.
    virtual void announceVerdict(const Score& score) = 0;

    virtual void showKey(pitch::NoteIndex key, bool pressed) = 0;
    virtual void showRangeMark(pitch::NoteIndex key, bool on) = 0;
    virtual void clearRangeMarks() = 0;

    virtual void showControl(EarControl control, bool on) = 0;
    virtual void focusIntoStart() = 0;
    virtual void enableExerciseMenu(bool on) = 0;

    /// The start button of the exercise reads "Stop" while it runs and takes other colours.
    virtual void showRunning(EarExercise exercise, bool running) = 0;
};
