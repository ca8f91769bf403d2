#pragma once

#include "eartraining/ear_exercise.h"
#include "eartraining/ear_prompt.h"
#include "eartraining/pitch/note_range.h"
#include "platform/user_text.h"

/// Recognising a played note: the user chooses a range and a reference note on the keyboard, then
/// names each note that is drawn from the range by clicking on its key.
class PitchExercise : public EarExercise {
public:
    /// The window cannot be left between the range and the start.
    static constexpr EarPrompt kChooseReference{
        QT_TRANSLATE_NOOP("UserText", "Scegli la nota di riferimento e premi Start"), true};
    static constexpr EarPrompt kRecognise{
        QT_TRANSLATE_NOOP("UserText", "Riconosci la nota suonata")};

    explicit PitchExercise(ExerciseContext& context);

    /// A click on a key: a bound of the range, the reference note, or an answer.
    void keyClicked(pitch::NoteIndex key) override;

    void startOrStop() override;

    const char* hint() const override;
    std::optional<KeySpan> span() const override;
    bool canHearAgain() const override { return running() && asked_; }
    void hearAgain() override;

    /// Begins anew with choosing a range; no other exercise can be chosen before the next stop.
    void reset();

    /// Whether each test sounds the reference note first and then a note that ends by itself.
    bool withReference() const;
    void toggleMode();

    /// Its buttons can be visible while the interval chart is chosen, which does not take the
    /// keyboard.
    bool visible() const override { return chosen() || startVisible() || resetVisible_; }
    bool resetVisible() const { return resetVisible_; }

    void enter() override;
    /// Forgets the range only if the next exercise takes the keyboard.
    void leave(bool keyboardTaken) override;
    void stopSound() override;

private:
    void setResetVisible(bool visible);
    void forgetRange();
    /// Ends the last note, whether it still sounds or not.
    void silence();
    void choose(pitch::NoteIndex key);
    void chooseReference(pitch::NoteIndex key);
    void answer(pitch::NoteIndex key);
    /// Plays a new note, or the last one again.
    void playTest(bool again);
    bool playReference(bool again);
    void play(pitch::NoteIndex key);
    void mark(pitch::NoteIndex key, bool on);

    NoteRange range_;
    pitch::NoteNumber reference_ = 0;
    bool resetVisible_ = false;
    bool started_ = false;
    bool stopped_ = false;  ///< the keyboard ignores clicks until a new range is asked for
    bool sounding_ = false;
    bool asked_ = false;  ///< a note was drawn and not recognised yet
    /// Counts tests and stops, so that a test that has let events run can tell whether it was
    /// replaced meanwhile.
    int testNumber_ = 0;
};
