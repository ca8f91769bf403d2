#include "metronome/metronome.h"

#include "core/funzioni_mm.h"
#include "platform/runtime.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The lamps are dark and the output is silent for this long before each click.
constexpr double kDarkSeconds = 0.1;

}  // namespace

Metronome::Metronome(Runtime& runtime, FunzioniMM& funzioniMM, MetronomeState& state,
                     MetronomeView& view)
    : runtime_(runtime), funzioniMM_(funzioniMM), state_(state), view_(view) {}

void Metronome::load() {
    showTimeSignature(state_.MetroTimeSig);
    view_.showLamps(static_cast<int>(state_.MetroPattern.size()));
}

void Metronome::startOrStop() {
    if (state_.MetroRunning)
        stop();
    else
        start();
}

void Metronome::start() {
    // Stopped and started again within one pass of the loop, or of another activity inside it: this
    // is a nested call, and the loop around it ends when it is reached again.
    if (unfinishedRun_ != 0)
        finish();
    state_.MetroRunning = true;
    view_.metronomeStarted();
    beat();
}

void Metronome::stop() {
    funzioniMM_.output().cancelPlanned();
    state_.MetroRunning = false;
    view_.metronomeStopped();
}

/// The pulse loop, from a start to its stop.
void Metronome::beat() {
    const int run = unfinishedRun_ = ++lastRun_;
    const QString pattern = state_.MetroPattern;
    showTimeSignature(state_.MetroTimeSig);
    view_.showLamps(static_cast<int>(pattern.size()));

    WaitChain waits = funzioniMM_.waits();
    for (int i = 0; letEventsRun(run, waits); i = (i + 1) % static_cast<int>(pattern.size())) {
        state_.takePulse(pattern[i]);
        if (funzioniMM_.output().isOpen())
            playPulse(i, run, waits);
        else
            awaited_.reset();
    }
    if (run == unfinishedRun_)
        finish();
}

/// Sends the closing notes of a run, once for each stop.
void Metronome::finish() {
    unfinishedRun_ = 0;
    awaited_.reset();
    for (const std::int16_t note : {state_.MetroNoteA, state_.MetroNoteB, state_.MetroNoteC})
        funzioniMM_.NoteOff(FunzioniMM::kPercussionChannel, note);
    view_.darkenLamps();
}

/// The pulse's one pass of events; returns whether the run is to go on. Without an output there is
/// nothing to do before the next event or the next try to reopen a lost output, so the pass sleeps
/// until then.
bool Metronome::letEventsRun(int run, WaitChain& waits) {
    const bool open = funzioniMM_.output().isOpen();
    if (funzioniMM_.output().ready())
        waits.pass();
    else if (funzioniMM_.output().isLost())
        runtime_.pump(runtime_.now() + OpenOutput::kRetryInterval);
    else
        runtime_.pump(kForever);
    if (!open)
        waits.restart();
    if (state_.MetroRunning && runtime_.ending())
        stop();
    return beating(run);
}

/// Whether the run goes on. A screen reader's press can stop it even in a wait, where no other
/// input comes through.
bool Metronome::beating(int run) const {
    return state_.MetroRunning && run == lastRun_ && !runtime_.ending();
}

void Metronome::playPulse(int lamp, int run, WaitChain& waits) {
    const Instant dark = waits.afterSeconds(state_.MetroPeriod - kDarkSeconds);
    const Instant click = waits.afterSeconds(kDarkSeconds);
    funzioniMM_.planReset(dark);
    funzioniMM_.planNoteOn(FunzioniMM::kPercussionChannel, state_.MetroPulseNote,
                           state_.MetroVolume, click);
    if (const auto awaited = std::exchange(awaited_, std::nullopt)) {
        funzioniMM_.waitUntil(std::min(awaited->heard, dark));
        view_.lightLamp(awaited->lamp, awaited->colour);
    }
    funzioniMM_.waitUntil(dark);
    funzioniMM_.ResetOutput();
    view_.darkenLamps();
    funzioniMM_.waitUntil(click);
    if (!beating(run)) {
        funzioniMM_.output().cancelPlanned();
        return;
    }
    const Instant heard = click + lampDelay(click);
    if (heard == click)
        view_.lightLamp(lamp, state_.MetroPulseColour);
    else
        awaited_ = {lamp, state_.MetroPulseColour, heard};
    funzioniMM_.NoteOn(FunzioniMM::kPercussionChannel, state_.MetroPulseNote, state_.MetroVolume);
    if (funzioniMM_.output().isOpen())
        return;
    awaited_.reset();
    view_.darkenLamps();
}

/// How much later than its click a lamp lights, in the wait that follows: when the click is heard,
/// but for at least half of the time until the lamps are dark again.
Instant Metronome::lampDelay(Instant click) const {
    const Instant lit = secondsToInstant(std::max(0.0, state_.MetroPeriod - kDarkSeconds));
    return std::min(funzioniMM_.output().nextHeard(click) - click, lit / 2);
}

bool Metronome::stepTimeSignature() {
    if (state_.MetroRunning)
        return false;
    const pulse_pattern::BuiltIn& next = pulse_pattern::builtInAfter(shownTimeSig_);
    state_.MetroTimeSig = next.timeSig;
    state_.MetroPattern = next.pattern;
    showTimeSignature(state_.MetroTimeSig);
    view_.showLamps(static_cast<int>(state_.MetroPattern.size()));
    return true;
}

void Metronome::setTempo(int beatsPerMinute) {
    tempo_ = beatsPerMinute;
    state_.MetroPeriod = 60.0 / tempo_ / state_.MetroMultiplier;
}

void Metronome::setShownTempo(double pulsesPerMinute) {
    const double tempo = std::round(pulsesPerMinute / state_.MetroMultiplier);
    setTempo(static_cast<int>(std::clamp<double>(tempo, kSlowest, kFastest)));
}

void Metronome::toggleDoubling() {
    state_.MetroMultiplier = doubled() ? 1 : 2;
    setTempo(tempo_);
}

void Metronome::setVolume(int velocity) {
    funzioniMM_.output().cancelPlanned();
    state_.MetroVolume = static_cast<std::int16_t>(velocity);
}

void Metronome::showTimeSignature(const QString& timeSig) {
    shownTimeSig_ = timeSig;
    view_.showTimeSignature(timeSig);
}
