#pragma once

#include "eartraining/ear_exercise.h"
#include "eartraining/ear_prompt.h"
#include "eartraining/interval/interval_chart.h"
#include "platform/user_text.h"

#include <array>

/// Recognising an interval upwards from middle C by its number of semitones. While the exercise
/// does not run, the same buttons just play their intervals.
class IntervalExercise : public EarExercise {
public:
    enum class Mode { Harmonic, Melodic, MelodicThenHarmonic };

    static constexpr EarPrompt kRecognise{
        QT_TRANSLATE_NOOP("UserText", "Riconosci intervallo suonato")};

    /// Clicks on keys go to `keyboardUser` except while this exercise runs.
    IntervalExercise(ExerciseContext& context, EarExercise& keyboardUser)
        : EarExercise(context, ExerciseCode::Interval), keyboardUser_(keyboardUser) {}

    void startOrStop() override;

    const char* hint() const override;
    std::optional<KeySpan> span() const override { return keyboardUser_.span(); }
    bool canHearAgain() const override { return running(); }
    void hearAgain() override;

    bool takesKeyboard() const override { return false; }
    void keyClicked(pitch::NoteIndex key) override;
    /// The distance of the key upwards from middle C is clicked.
    void keyPlayed(pitch::NoteIndex key, const HeldKeys& held) override;

    /// An answer while the exercise runs; else the interval is played and its keys are shown.
    void semitonesClicked(int semitones);

    /// Plays an interval of 0..13 semitones; any other does nothing.
    void ppSuonaInt(int semitones);

    Mode mode() const { return mode_; }
    void stepMode();

    bool available(int semitones) const;
    /// Takes an interval of 1..13 semitones out of the draw or puts it back in.
    void toggleAvailable(int semitones);
    /// Does the same with all of them: all follow the interval of 1 semitone.
    void toggleAll();

    void enter() override { stopSound(); }
    void leave(bool keyboardTaken) override;
    void stopSound() override;

private:
    void drawAndPlay();
    void playPair(pitch::NoteNumber lower, pitch::NoteNumber upper);
    bool playMelodic(bool endsWithHarmony);
    void playHarmonic();
    void showPair(bool pressed);
    void endPair();
    /// Ends the notes of the last interval, whether they still sound or not, and releases its keys.
    void silence();

    EarExercise& keyboardUser_;
    Mode mode_ = Mode::Harmonic;
    std::array<bool, interval_chart::kIntervals> excluded_{};
    int current_ = 0;
    pitch::NoteNumber lower_ = 0;  ///< the last interval played; 0 before the first
    pitch::NoteNumber upper_ = 0;
    bool sounding_ = false;
    /// Counts intervals and stops, so that an interval that has let events run can tell whether it
    /// was replaced meanwhile.
    int intervalNumber_ = 0;
};
