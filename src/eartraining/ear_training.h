#pragma once

#include "core/piano_keys.h"
#include "eartraining/chord/chord_exercise.h"
#include "eartraining/ear_desk.h"
#include "eartraining/interval/interval_exercise.h"
#include "eartraining/pitch/pitch_exercise.h"

struct EarTrainingState;

/// One opening of the ear-training window: three exercises over one keyboard and one score, and the
/// computer keyboard as a piano beside them.
class EarTraining : private PianoKeysListener {
public:
    EarTraining(Runtime& runtime, FunzioniMM& funzioniMM, Dialogs& dialogs,
                EarTrainingState& state);
    ~EarTraining() override;

    /// Gives the view what it shows while the window loads.
    void load(EarTrainingView& view);

    /// Opens on the exercise that was asked for and plays the computer keyboard until the window
    /// is closed or the program ends.
    void activate();

    /// Closes: ends every note, and the loop of `activate` at its next pass. Refused while an
    /// exercise runs, and while the reference note is being chosen.
    bool unload();

    void keyClicked(pitch::NoteIndex key);

    void choosePitch();
    void chooseInterval();
    void chooseChord();

    PitchExercise& pitch() { return pitch_; }
    IntervalExercise& interval() { return interval_; }
    ChordExercise& chord() { return chord_; }
    PianoKeys& pianoKeys() { return pianoKeys_; }

private:
    void noteDown(pitch::NoteNumber note) override;
    void noteUp(pitch::NoteNumber note) override;

    void pollKeys();
    void setChordOnShow(bool on);
    void setIntervalOnShow(bool on);
    void quiet();

    Runtime& runtime_;
    EarTrainingState& state_;
    EarDesk desk_;
    PitchExercise pitch_;
    IntervalExercise interval_;
    ChordExercise chord_;
    PianoKeys pianoKeys_;
    bool chordOnShow_ = false;
    bool closed_ = false;
};
