#include "eartraining/interval/interval_exercise.h"

#include "core/funzioni_mm.h"
#include "core/random.h"
#include "eartraining/ear_desk.h"
#include "platform/runtime.h"

#include <algorithm>

namespace {

constexpr double kNoteSeconds = 0.7;
constexpr double kGapSeconds = 0.1;
constexpr double kPauseSeconds = 0.3;

}  // namespace

void IntervalExercise::startOrStop() {
    if (desk_.running(EarExercise::Interval)) {
        desk_.stop(EarExercise::Interval);
        silence();
        return;
    }
    desk_.start(EarExercise::Interval);
    desk_.resetScore();
    showPair(false);
    drawAndPlay();
    if (desk_.running(EarExercise::Interval))
        desk_.setPrompt(EarPrompt::RecogniseInterval);
}

void IntervalExercise::semitonesClicked(int semitones) {
    if (!desk_.running(EarExercise::Interval)) {
        ppSuonaInt(semitones);
        return;
    }
    const bool right = semitones == current_;
    desk_.judge(right, false);
    if (right)
        drawAndPlay();
}

/// The interval of 0 semitones cannot be excluded, so there is always one to draw.
void IntervalExercise::drawAndPlay() {
    do {
        current_ = drawBetween(0, interval_chart::kIntervals - 1, desk_.funzioniMM().Rnd());
    } while (!available(current_));
    ppSuonaInt(current_);
}

void IntervalExercise::ppSuonaInt(int semitones) {
    if (interval_chart::isInterval(semitones))
        playPair(pitch::kMiddleC, static_cast<pitch::NoteNumber>(pitch::kMiddleC + semitones));
}

/// Only a listener sees the keys; while the exercise runs they would give the answer away. In the
/// melodic modes events run once before the first note; what they play or stop overtakes this one.
void IntervalExercise::playPair(pitch::NoteNumber lower, pitch::NoteNumber upper) {
    const int turn = ++turn_;
    const bool showsKeys = !desk_.running(EarExercise::Interval);
    endPair();
    if (showsKeys)
        showPair(false);
    lower_ = lower;
    upper_ = upper;
    if (showsKeys)
        showPair(true);
    if (mode_ == Mode::Harmonic) {
        playHarmonic();
        return;
    }
    const bool endsWithHarmony = mode_ == Mode::MelodicThenHarmonic;
    desk_.runtime().yield();
    if (turn != turn_)
        return;
    playMelodic();
    if (endsWithHarmony)
        playHarmonic();
}

void IntervalExercise::playMelodic() {
    desk_.noteOn(lower_);
    desk_.funzioniMM().WaitSeconds(kNoteSeconds);
    desk_.noteOff(lower_);
    desk_.funzioniMM().WaitSeconds(kGapSeconds);
    desk_.noteOn(upper_);
    desk_.funzioniMM().WaitSeconds(kNoteSeconds);
    desk_.noteOff(upper_);
    desk_.funzioniMM().WaitSeconds(kPauseSeconds);
}

void IntervalExercise::playHarmonic() {
    sounding_ = true;
    desk_.noteOn(lower_);
    desk_.noteOn(upper_);
}

void IntervalExercise::stepMode() {
    switch (mode_) {
        case Mode::Harmonic:
            mode_ = Mode::Melodic;
            break;
        case Mode::Melodic:
            mode_ = Mode::MelodicThenHarmonic;
            break;
        case Mode::MelodicThenHarmonic:
            mode_ = Mode::Harmonic;
            break;
    }
}

bool IntervalExercise::available(int semitones) const {
    return !excluded_[static_cast<std::size_t>(semitones)];
}

void IntervalExercise::toggleAvailable(int semitones) {
    if (semitones < 1 || !interval_chart::isInterval(semitones))
        return;
    bool& excluded = excluded_[static_cast<std::size_t>(semitones)];
    excluded = !excluded;
}

void IntervalExercise::toggleAll() {
    std::fill(excluded_.begin() + 1, excluded_.end(), available(1));
}

void IntervalExercise::silence() {
    ++turn_;
    endPair();
    showPair(false);
}

void IntervalExercise::quiet() {
    ++turn_;
    if (sounding_)
        silence();
}

void IntervalExercise::endPair() {
    sounding_ = false;
    desk_.noteOff(lower_);
    desk_.noteOff(upper_);
}

void IntervalExercise::showPair(bool pressed) {
    desk_.showNote(lower_, pressed);
    desk_.showNote(upper_, pressed);
}
