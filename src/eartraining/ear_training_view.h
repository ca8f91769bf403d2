#pragma once

#include "core/pitch.h"
#include "core/verdict.h"
#include "eartraining/key_span.h"

#include <optional>

class EarExercise;
class Score;
struct EarPrompt;

/// What the ear-training window shows: what all exercises have in common, and each exercise's
/// panel.
class EarTrainingView {
public:
    virtual ~EarTrainingView() = default;

    virtual void showPrompt(const EarPrompt& prompt) = 0;
    /// The second line beside the prompt, a literal shown by `UserText::tr`.
    virtual void showHint(const char* hint) = 0;
    virtual void showScore(const Score& score) = 0;
    /// An answer has been judged and is in the score.
    virtual void announceVerdict(const Score& score) = 0;
    /// The same at the key or button that was clicked: the key's index, or the number of semitones
    /// or of the chord's type. Until it is hidden or another one is shown.
    virtual void showVerdict(const EarExercise& exercise, int answer, Verdict verdict) = 0;
    virtual void hideVerdict() = 0;

    /// The state that an exercise's panel shows has changed.
    virtual void showExercise(const EarExercise& exercise) = 0;
    /// The exercise's start button is to have the focus.
    virtual void focusStart(const EarExercise& exercise) = 0;

    virtual void showKey(pitch::NoteIndex key, bool pressed) = 0;
    virtual void showRangeMark(pitch::NoteIndex key, bool on) = 0;
    virtual void clearRangeMarks() = 0;
    /// The range between the marks, once it has both ends.
    virtual void showSpan(const std::optional<KeySpan>& span) = 0;

    /// Whether the question can be heard again now.
    virtual void enableHearAgain(bool on) = 0;

    virtual void showClose(bool on) = 0;
    virtual void enableExerciseMenu(bool on) = 0;
};
