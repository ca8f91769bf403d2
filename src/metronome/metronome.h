#pragma once

#include "core/wait_chain.h"
#include "metronome/metronome_state.h"

#include <QString>

#include <optional>

class FunzioniMM;
class Runtime;

/// What the metronome shows; its frame implements it.
class MetronomeView {
public:
    virtual ~MetronomeView() = default;

    virtual void metronomeStarted() = 0;
    virtual void metronomeStopped() = 0;
    virtual void showTimeSignature(const QString& timeSig) = 0;
    /// Every lamp grey, and visible only the first `count`.
    virtual void showLamps(int count) = 0;
    virtual void darkenLamps() = 0;
    virtual void lightLamp(int lamp, pulse_pattern::Colour colour) = 0;
};

/// The metronome: it beats the pattern of its state on the percussion channel and lights a lamp
/// for each pulse. Starting it runs the pulse loop, which lets events run once a pulse. A nested
/// call stops it then, and a changed tempo, doubling or volume takes effect with that pulse.
class Metronome {
public:
    /// The view is not used before `load`.
    Metronome(Runtime& runtime, FunzioniMM& funzioniMM, MetronomeState& state, MetronomeView& view);

    /// Gives the view what it shows before the first start.
    void load();

    /// Stops a running metronome. Starts a stopped one and returns when it has stopped again, also
    /// if it is called from within the pass of an earlier start.
    void startOrStop();

    /// Goes on to the next built-in time signature; ignored while running. Whether it did.
    bool stepTimeSignature();

    static constexpr int kSlowest = 20;
    static constexpr int kFastest = 200;
    /// Of the fastest tempo, doubled.
    static constexpr int kTempoDigits = 3;

    /// Beats per minute before doubling, `kSlowest`..`kFastest`.
    void setTempo(int beatsPerMinute);
    /// The tempo of which the doubling makes the nearest to so many pulses per minute.
    void setShownTempo(double pulsesPerMinute);
    void toggleDoubling();
    /// 0..127.
    void setVolume(int velocity);

    bool doubled() const { return state_.MetroMultiplier != 1; }
    int tempo() const { return tempo_; }
    /// The tempo with the doubling.
    int shownTempo() const { return state_.MetroMultiplier * tempo_; }

private:
    void start();
    void stop();
    void beat();
    void finish();
    bool letEventsRun(int run, WaitChain& waits);
    bool beating(int run) const;
    void playPulse(int lamp, int run, WaitChain& waits);
    Instant lampDelay(Instant click) const;
    void showTimeSignature(const QString& timeSig);

    Runtime& runtime_;
    FunzioniMM& funzioniMM_;
    MetronomeState& state_;
    MetronomeView& view_;

    /// A lamp whose click was sent and is not heard yet.
    struct AwaitedLamp {
        int lamp;
        pulse_pattern::Colour colour;
        Instant heard;
    };

    int tempo_ = 60;
    std::optional<AwaitedLamp> awaited_;
    QString shownTimeSig_;   ///< can lag behind the state until the next start
    int lastRun_ = 0;        ///< the number of the last start
    int unfinishedRun_ = 0;  ///< the run whose closing notes have not been sent yet; 0 for none
};
