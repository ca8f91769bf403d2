#pragma once

#include "core/pitch.h"
#include "platform/runtime.h"

#include <QString>

class FunzioniMM;
struct Composition;

/// What the player shows; the window implements it.
class PlayerView {
public:
    virtual ~PlayerView() = default;

    virtual void showPlaying(bool playing) = 0;               ///< `cmdPlay` reads "Stop" or "Play"
    virtual void enableCanc(bool enabled) = 0;                ///< `cmdCanc`
    virtual void showEntryNumber(const QString& text) = 0;    ///< `lblNe`
    virtual void showEntryName(const QString& text) = 0;      ///< `lblPnn`
    virtual void markKey(pitch::NoteIndex key, bool on) = 0;  ///< repainted at once
    virtual void focusPlay() = 0;                             ///< `cmdPlay` takes the focus
};

/// Plays stretches of the melody. `play` is a loop that blocks for the length of each note and lets
/// events run before each entry; a call from within such an event stops the playback.
class MelodyPlayer {
public:
    MelodyPlayer(Runtime& runtime, FunzioniMM& funzioniMM, const Composition& composition,
                 PlayerView& view)
        : runtime_(runtime), funzioniMM_(funzioniMM), composition_(composition), view_(view) {}

    /// Plays the entries from `start` to `end`, counted from 0, or stops what is playing. An entry
    /// too short to sound ends the playback on the spot, with `playing` left true: the next call
    /// only puts that right. An entry that is not in the melody ends it as well. While an entry of
    /// more than `kLongEntryMs` lasts, events run once a second and may stop it.
    void play(std::int16_t start, std::int16_t end);

    /// Whether `cmdPlay` reads "Stop".
    bool playing() const { return playing_; }

    /// Ends the playback without letting events run, as a closing window does: the note ends here
    /// and "Play" can be read again. Nothing happens when nothing plays.
    void abandon();

    /// Sends a note-off for every note and unmarks every key.
    void silenceAll();

    /// "Ripeti": the range is played again and again.
    void setLoops(bool on) { loops_ = on; }

    /// The number of the last entry stays on show at the end of a pass.
    void toggleKeepLastNumber() { keepsLastNumber_ = !keepsLastNumber_; }

    static constexpr int kLongEntryMs = 20000;

private:
    struct Run;
    enum class End { Reached, TooShort, Stopped };

    End playPasses(std::int16_t start, std::int16_t end, Run& run);
    End playEntry(int index, Run& run);
    bool stopped(const Run& run);
    bool waitUntil(Instant end, const Run& run, pitch::NoteNumber ending = pitch::kRest);
    void beginNote(pitch::NoteNumber note, int velocity, Instant at);
    void endNote();
    void finish();
    void leaveEntry();

    Runtime& runtime_;
    FunzioniMM& funzioniMM_;
    const Composition& composition_;
    PlayerView& view_;

    bool playing_ = false;
    bool loops_ = false;
    bool keepsLastNumber_ = false;
    unsigned calls_ = 0;                         ///< of `play`, to know the last one by
    pitch::NoteNumber sounding_ = pitch::kRest;  ///< `kRest` = no note
};
