#pragma once

#include "core/pitch.h"
#include "eartraining/interval/interval_chart.h"

#include <array>

class EarDesk;

/// Recognising an interval upwards from middle C by its number of semitones. While the exercise
/// does not run, the same buttons just play their intervals.
class IntervalExercise {
public:
    enum class Mode { Harmonic, Melodic, MelodicThenHarmonic };

    explicit IntervalExercise(EarDesk& desk) : desk_(desk) {}

    void startOrStop();

    /// An answer while the exercise runs; else the interval is played and its keys are shown.
    void semitonesClicked(int semitones);

    /// Plays an interval of 0..13 semitones; any other does nothing.
    void ppSuonaInt(int semitones);

    Mode mode() const { return mode_; }
    void stepMode();

    bool available(int semitones) const;
    /// Takes an interval of 1..13 semitones out of the draw or puts it back in.
    void toggleAvailable(int semitones);
    /// Does the same with all of them, as the first of them goes.
    void toggleAll();

    /// Ends the notes of the last interval and releases its keys.
    void silence();
    /// The same if they still sound.
    void quiet();

private:
    void drawAndPlay();
    void playPair(pitch::NoteNumber lower, pitch::NoteNumber upper);
    void playMelodic();
    void playHarmonic();
    void showPair(bool pressed);
    void endPair();

    EarDesk& desk_;
    Mode mode_ = Mode::Harmonic;
    std::array<bool, interval_chart::kIntervals> excluded_{};
    int current_ = 0;
    pitch::NoteNumber lower_ = 0;  ///< the last interval played; 0 before the first
    pitch::NoteNumber upper_ = 0;
    bool sounding_ = false;
    int turn_ = 0;  ///< counts what has overtaken an interval that lets events through
};
