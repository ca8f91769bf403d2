#pragma once

#include "core/pitch.h"

class Score;
struct EarPrompt;

/// What all exercises show in common: the ear-training window without the exercises' panels.
class EarTrainingView {
public:
    virtual ~EarTrainingView() = default;

    virtual void showPrompt(const EarPrompt& prompt) = 0;
    virtual void showScore(const Score& score) = 0;
    /// An answer has been judged and is in the score.
    virtual void announceVerdict(const Score& score) = 0;

    virtual void showKey(pitch::NoteIndex key, bool pressed) = 0;
    virtual void showRangeMark(pitch::NoteIndex key, bool on) = 0;
    virtual void clearRangeMarks() = 0;

    virtual void showClose(bool on) = 0;
    virtual void enableExerciseMenu(bool on) = 0;
};
