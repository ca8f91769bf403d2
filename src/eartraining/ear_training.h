#pragma once

#include "core/piano_keys.h"
#include "eartraining/ear_guidance.h"
#include "eartraining/exercise_context.h"
#include "eartraining/exercises.h"

class EarTrainingState;
class EarTrainingView;

/// The logic of the ear-training window from its opening to its closing: the exercises, which share
/// one keyboard and one score, and the computer keyboard as a piano beside them.
class EarTraining : private PianoKeysListener {
public:
    /// The view is not used before `load`.
    EarTraining(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs, EarTrainingState& state,
                EarTrainingView& view);
    ~EarTraining() override;

    /// Gives the view what it shows while the window loads.
    void load();

    /// Opens on the exercise that was asked for and plays the computer keyboard until the window
    /// is closed or the program ends.
    void activate();

    /// Closes: ends every note, and the loop of `activate` at its next pass. Refused while an
    /// exercise runs, and while the prompt keeps the window open.
    bool unload();

    void keyClicked(pitch::NoteIndex key);

    /// Plays again what was asked, as long as no note of the keyboard sounds.
    void hearAgain();

    /// The keys of a MIDI keyboard. They sound nothing by themselves, as a click does.
    void keyPlayed(pitch::NoteIndex key);
    void keyReleased(pitch::NoteIndex key) { played_.erase(key); }

    /// As the start button of the chosen exercise, if that is to be seen.
    void startOrStop();

    /// Chooses an exercise, as from the window's menu.
    void choose(EarExercise& exercise);

    Exercises& exercises() { return exercises_; }
    PianoKeys& pianoKeys() { return pianoKeys_; }

private:
    void noteDown(pitch::NoteNumber note) override;
    void noteUp(pitch::NoteNumber note) override;

    void open(EarExercise& exercise);
    void show(EarExercise& exercise);
    EarExercise* runningExercise() const;
    EarExercise& askingExercise() const;
    void showGuidance();
    void pollKeys();
    void stopSounds();

    Runtime& runtime_;
    EarTrainingState& state_;
    ExerciseContext context_;
    EarGuidance guidance_;
    Exercises exercises_;
    EarExercise* chosen_;
    PianoKeys pianoKeys_;
    HeldKeys played_;
    bool closed_ = false;
};
