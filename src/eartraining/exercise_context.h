#pragma once

#include "core/moment.h"
#include "core/pitch.h"
#include "eartraining/ear_prompt.h"
#include "eartraining/score.h"
#include "platform/runtime.h"

#include <functional>

class Dialogs;
class EarExercise;
class EarTrainingView;
class FunzioniMM;

/// What the exercises share: the sound, the prompt, the score, the keyboard and the window's frame.
class ExerciseContext {
public:
    ExerciseContext(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs,
                    EarTrainingView& view);

    /// Called after the prompt or what an exercise shows has changed.
    void onChange(std::function<void()> handler) { changed_ = std::move(handler); }

    Runtime& runtime() { return runtime_; }
    FunzioniMM& funzioniMM() { return funzioniMM_; }

    const EarPrompt& prompt() const { return prompt_; }
    void setPrompt(const EarPrompt& prompt);
    void message(const char* text);

    void resetScore();
    /// Counts an answer and shows the verdict for a moment where it was given; the colours of the
    /// counters alternate only in the pitch exercise.
    void judge(const EarExercise& exercise, int answer, bool right, bool alternateColours = false);
    void endVerdict() { verdict_.end(); }

    void showExercise(const EarExercise& exercise);
    void focusStart(const EarExercise& exercise);

    /// Notes on the melody channel, from the keyboards as in the exercises.
    void noteOn(pitch::NoteNumber note);
    void noteOff(pitch::NoteNumber note);
    /// Hand the same to the output ahead; each is to be called at its instant all the same.
    void planNoteOn(pitch::NoteNumber note, Instant at);
    void planNoteOff(pitch::NoteNumber note, Instant at);
    /// A note number outside the keyboard shows nothing.
    void showNote(pitch::NoteNumber note, bool pressed);
    void markKey(pitch::NoteIndex key, bool on);
    void clearRangeMarks();

    /// Shows or hides the button that closes the window.
    void showClose(bool on);

    /// No exercise can be chosen while one runs.
    void exerciseStarted();
    void exerciseStopped();
    /// No exercise can be chosen until the next stop of one.
    void lockExercises();

private:
    void showExerciseMenu();

    Runtime& runtime_;
    FunzioniMM& funzioniMM_;
    Dialogs& dialogs_;
    EarTrainingView& view_;
    EarPrompt prompt_ = range_prompts::kLowerKey;
    Score score_;
    Moment verdict_;
    std::function<void()> changed_;
    int running_ = 0;
    bool locked_ = false;
};
