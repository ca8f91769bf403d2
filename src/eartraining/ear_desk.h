#pragma once

#include "core/pitch.h"
#include "eartraining/ear_exercise.h"
#include "eartraining/ear_prompt.h"
#include "eartraining/ear_training_view.h"
#include "eartraining/score.h"

#include <set>

class Dialogs;
class FunzioniMM;
class Runtime;

/// What the three exercises share: the prompt, the score, the keys on show, and which of them run.
class EarDesk {
public:
    EarDesk(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs)
        : runtime_(runtime), funzioniMM_(funzioniMM), dialogs_(dialogs) {}

    void attach(EarTrainingView& view) { view_ = &view; }
    EarTrainingView& view() { return *view_; }
    Runtime& runtime() { return runtime_; }
    FunzioniMM& funzioniMM() { return funzioniMM_; }

    EarPrompt prompt() const { return prompt_; }
    void setPrompt(EarPrompt prompt);
    void message(const char* text);

    void resetScore();
    /// Counts an answer; the colours of the counters alternate only in the pitch exercise.
    void judge(bool right, bool alternateColours);

    bool running(EarExercise exercise) const { return running_.count(exercise) > 0; }
    bool anyRunning() const { return !running_.empty(); }
    /// While an exercise runs no other can be chosen.
    void start(EarExercise exercise);
    void stop(EarExercise exercise);
    /// No other exercise can be chosen until the next stop.
    void lockExercises();

    /// Notes on the melody channel, from the keyboards as in the exercises.
    void noteOn(pitch::NoteNumber note);
    void noteOff(pitch::NoteNumber note);
    /// A note number outside the keyboard shows nothing.
    void showNote(pitch::NoteNumber note, bool pressed);

private:
    void showExerciseMenu();

    Runtime& runtime_;
    FunzioniMM& funzioniMM_;
    Dialogs& dialogs_;
    EarTrainingView* view_ = nullptr;
    EarPrompt prompt_ = EarPrompt::LowerKey;
    Score score_;
    std::set<EarExercise> running_;
    bool locked_ = false;
};
