#pragma once

#include "eartraining/pitch/note_range.h"

class EarDesk;

/// Recognising a played note: the user chooses a range and a reference note on the keyboard, then
/// names each note that is drawn from the range by clicking on its key.
class PitchExercise {
public:
    explicit PitchExercise(EarDesk& desk);

    /// A click on a key: a bound of the range, the reference note, or an answer.
    void keyClicked(pitch::NoteIndex key);

    void startOrStop();

    /// Begins anew with choosing a range; no other exercise can be chosen before the next stop.
    void reset();

    /// Whether each test sounds the reference note first and then a note that ends by itself.
    bool withReference() const;
    void toggleMode();

    const NoteRange& range() const { return range_; }
    pitch::NoteNumber reference() const { return reference_; }

    /// Forgets the range and what came of it.
    void leave();
    /// Forgets the range; after a stop the keyboard goes on resting.
    void forgetRange() { range_.clear(); }
    /// After a stop the keyboard rests until a new range is asked for.
    void liftStop() { stopped_ = false; }
    /// Ends the last note.
    void silence();
    /// The same if it still sounds.
    void quiet();

private:
    void choose(pitch::NoteIndex key);
    void chooseReference(pitch::NoteIndex key);
    void answer(pitch::NoteIndex key);
    void playTest();
    void play(pitch::NoteIndex key);
    void mark(pitch::NoteIndex key, bool on);

    EarDesk& desk_;
    NoteRange range_;
    pitch::NoteNumber reference_ = 0;
    bool started_ = false;
    bool stopped_ = false;
    bool sounding_ = false;
    int turn_ = 0;  ///< counts what has overtaken a test that lets events through
};
