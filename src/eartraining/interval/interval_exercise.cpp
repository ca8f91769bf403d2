#include "eartraining/interval/interval_exercise.h"

#include "core/funzioni_mm.h"
#include "eartraining/exercise_context.h"

#include <algorithm>

namespace {

constexpr double kNoteSeconds = 0.7;
constexpr double kGapSeconds = 0.1;
constexpr double kPauseSeconds = 0.3;

}  // namespace

void IntervalExercise::startOrStop() {
    if (running()) {
        setRunning(false);
        silence();
        return;
    }
    setRunning(true);
    context().resetScore();
    showPair(false);
    drawAndPlay();
    if (running())
        context().setPrompt(kRecognise);
}

const char* IntervalExercise::hint() const {
    if (running())
        return QT_TRANSLATE_NOOP(
            "UserText", "Clicca il numero dei semitoni che hai sentito; F4 li fa riascoltare");
    if (context().prompt() == kRecognise)
        return QT_TRANSLATE_NOOP("UserText",
                                 "Premi Start per un altro intervallo, o un numero per ascoltarlo");
    return QT_TRANSLATE_NOOP("UserText",
                             "Qui non serve: premi Start, o un numero per ascoltare l'intervallo");
}

void IntervalExercise::hearAgain() {
    if (canHearAgain())
        playPair(lower_, upper_);
}

void IntervalExercise::keyClicked(pitch::NoteIndex key) {
    if (!running())
        keyboardUser_.keyClicked(key);
}

void IntervalExercise::keyPlayed(pitch::NoteIndex key, const HeldKeys& /*held*/) {
    const int semitones = pitch::noteNumberOf(key) - pitch::kMiddleC;
    if (interval_chart::isInterval(semitones))
        semitonesClicked(semitones);
}

void IntervalExercise::semitonesClicked(int semitones) {
    if (!running()) {
        ppSuonaInt(semitones);
        return;
    }
    const bool right = semitones == current_;
    context().judge(*this, semitones, right);
    if (right)
        drawAndPlay();
}

/// The interval of 0 semitones cannot be excluded, so there is always one to draw.
void IntervalExercise::drawAndPlay() {
    do {
        current_ = context().funzioniMM().random().between(0, interval_chart::kIntervals - 1);
    } while (!available(current_));
    ppSuonaInt(current_);
}

void IntervalExercise::ppSuonaInt(int semitones) {
    if (interval_chart::isInterval(semitones))
        playPair(pitch::kMiddleC, static_cast<pitch::NoteNumber>(pitch::kMiddleC + semitones));
}

/// The keys are shown only while the exercise does not run; they would give the answer away. In the
/// melodic modes events run once before the first note, and a screen reader's presses come through
/// the waits; if they play another interval or stop, this one is given up.
void IntervalExercise::playPair(pitch::NoteNumber lower, pitch::NoteNumber upper) {
    const int number = ++intervalNumber_;
    const bool showsKeys = !running();
    endPair();
    if (showsKeys)
        showPair(false);
    lower_ = lower;
    upper_ = upper;
    if (showsKeys)
        showPair(true);
    const Mode mode = mode_;
    if (mode != Mode::Harmonic) {
        context().runtime().yield();
        if (number != intervalNumber_ || !playMelodic(mode == Mode::MelodicThenHarmonic))
            return;
    }
    if (mode != Mode::Melodic)
        playHarmonic();
}

/// Whether no other interval or stop came in between.
bool IntervalExercise::playMelodic(bool endsWithHarmony) {
    const int number = intervalNumber_;
    const auto waitUntil = [this, number](Instant end) {
        context().funzioniMM().waitUntil(end);
        return number == intervalNumber_;
    };
    WaitChain waits = context().funzioniMM().waits();
    sounding_ = true;
    context().planNoteOn(lower_, waits.reached());
    context().noteOn(lower_);
    const Instant lowerEnd = waits.afterSeconds(kNoteSeconds);
    const Instant upperStart = waits.afterSeconds(kGapSeconds);
    const Instant upperEnd = waits.afterSeconds(kNoteSeconds);
    const Instant harmony = waits.afterSeconds(kPauseSeconds);
    context().planNoteOff(lower_, lowerEnd);
    context().planNoteOn(upper_, upperStart);
    context().planNoteOff(upper_, upperEnd);
    if (endsWithHarmony) {
        context().planNoteOn(lower_, harmony);
        context().planNoteOn(upper_, harmony);
    }
    if (!waitUntil(lowerEnd))
        return false;
    context().noteOff(lower_);
    if (!waitUntil(upperStart))
        return false;
    context().noteOn(upper_);
    if (!waitUntil(upperEnd))
        return false;
    context().noteOff(upper_);
    if (!waitUntil(harmony))
        return false;
    sounding_ = false;
    return true;
}

void IntervalExercise::playHarmonic() {
    sounding_ = true;
    context().noteOn(lower_);
    context().noteOn(upper_);
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

void IntervalExercise::leave(bool /*keyboardTaken*/) {
    silence();
}

void IntervalExercise::silence() {
    ++intervalNumber_;
    endPair();
    showPair(false);
}

void IntervalExercise::stopSound() {
    ++intervalNumber_;
    if (sounding_)
        silence();
}

void IntervalExercise::endPair() {
    sounding_ = false;
    context().noteOff(lower_);
    context().noteOff(upper_);
}

void IntervalExercise::showPair(bool pressed) {
    context().showNote(lower_, pressed);
    context().showNote(upper_, pressed);
}
