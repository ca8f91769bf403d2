#pragma once

#include "core/open_output.h"
#include "core/pitch.h"
#include "core/random.h"
#include "core/wait_chain.h"
#include "platform/midi_out.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

class Dialogs;
class Media;
class QEvent;
class Runtime;

/// The sound module: the one MIDI output, the single-voice note player, the blocking wait, the
/// introductory tune and the answer sounds. There is one object of it, made at start-up and shared
/// by every window.
///
/// Message traffic: melodic notes go to channel 1, clicks to channel 10; a note ends with a note-on
/// of velocity 0, never with a note-off status; no controllers are sent. The instrument of channel
/// 1 is a General MIDI program.
class FunzioniMM {
public:
    FunzioniMM(Runtime& runtime, MidiOut& midiOut, Media& media, Dialogs& dialogs, Random random);

    static constexpr int kMelodyChannel = 1;
    static constexpr int kPercussionChannel = 10;

    /// The argument of `PlayNoteIndex` that silences the note that sounds.
    static constexpr std::int16_t kSilence = -1;
    /// The argument of `PlayNoteIndex` that draws a note of the range.
    static constexpr std::int16_t kRandomNote = -2;

    /// Closes the open output and opens a device (-1 = the default output). A failure is reported
    /// and answers false; the output then stays as the close left it.
    bool MidiOpen(int deviceId);

    /// Closes the output if one is open. A failure is reported and keeps the handle.
    void MidiClose();

    /// Packs and sends a short message; a refusal is reported, and that the output is gone once
    /// until it is back. Values that do not fit into 32 bits are the caller's error and send
    /// nothing.
    void SendShortMsg(std::int16_t status, std::int16_t data1, std::int16_t data2);

    /// Channel 1..16, note number 0..127, velocity 0..127.
    void NoteOn(int channel, int note, int velocity);
    void NoteOff(int channel, int note);

    /// Program 0..127 on channel 1. Whatever the output answers is not looked at.
    void ProgramChange(std::int32_t program);

    /// Silences every note of the output at once, keeping the programs.
    void ResetOutput();

    /// Hand the same to the output ahead of their instant, when nothing can come between: each is
    /// to be called at that instant all the same (see `OpenOutput::plan`).
    void planNoteOn(int channel, int note, int velocity, Instant at);
    void planNoteOff(int channel, int note, Instant at);
    void planReset(Instant at) { output_.planReset(at); }

    /// Plays one note at a time: a note index 0..59 sounds until the next call, `kSilence` silences
    /// the last one, any lower value draws a note between the range's bounds. With auto-silence on,
    /// a drawn note sounds 0.9 s and the call waits for its end.
    void PlayNoteIndex(std::int16_t index);

    /// Draws the note of the next `PlayNoteIndex(kRandomNote)` and hands it to the output ahead. It
    /// is due at the end of the chain; with auto-silence on, the chain goes on to the note's end.
    void planRandomNote(WaitChain& chain);

    /// The same without a draw: the next `PlayNoteIndex(kRandomNote)` plays the note that was drawn
    /// last once more.
    void planDrawnNote(WaitChain& chain) { planNote(drawnIndex_, chain); }

    /// A uniform draw, bounds included; equal bounds draw nothing.
    std::int16_t RandomNoteIndex(std::int16_t lower, std::int16_t upper);

    /// Waits that follow each other, to begin now, and a wait for the end of one of them.
    WaitChain waits();
    void waitUntil(Instant end);
    /// The same, but it ends early for the user's input (see `Runtime::blockUnless`).
    bool waitUnless(Instant end, const std::function<bool(const QEvent& input)>& ends);

    /// A blocking wait of more than 0 and less than 10 seconds; any other returns at once.
    void WaitSeconds(double seconds);

    /// Opens a MIDI file for playing. A failure is silent and sets `mediaOpenFailed` for good.
    void MediaOpen(const QString& path);
    void MediaPlay();
    void MediaClose();

    /// Plays a wave file, returning at once; a missing one gives the default sound or silence.
    void PlaySoundFile(const QString& path, bool defaultIfMissing);

    /// Chooses the instrument of channel 1 and sends it.
    void chooseInstrument(std::int32_t program);

    OpenOutput& output() { return output_; }
    const OpenOutput& output() const { return output_; }
    RandomNumbers& random() { return random_; }
    /// Called whenever the output or the instrument changed.
    void onChange(std::function<void()> handler);
    std::uint32_t lastMessage() const { return lastMessage_; }
    std::int16_t lastSendResult() const { return lastSendResult_; }
    std::int32_t currentInstrument() const { return currentInstrument_; }
    void setCurrentInstrument(std::int32_t program);
    pitch::NoteIndex lastNoteIndex() const { return lastNoteIndex_; }

    /// The range of the random draw, in note indices; -1 when unset.
    pitch::NoteIndex rangeLower() const { return rangeLower_; }
    pitch::NoteIndex rangeUpper() const { return rangeUpper_; }
    void setRangeLower(pitch::NoteIndex index) { rangeLower_ = index; }
    void setRangeUpper(pitch::NoteIndex index) { rangeUpper_ = index; }

    pitch::NoteIndex drawnIndex() const { return drawnIndex_; }
    /// Set by the first random draw of the run and never cleared.
    bool noteDrawn() const { return noteDrawn_; }
    bool autoSilence() const { return autoSilence_; }
    void setAutoSilence(bool on) { autoSilence_ = on; }
    bool mediaOpenFailed() const { return mediaOpenFailed_; }

private:
    struct DrawnAhead {
        pitch::NoteIndex index;
        Instant end;
    };

    void planNote(pitch::NoteIndex index, WaitChain& chain);
    void send(std::uint32_t message);
    void ReportMidiError(const QString& operation, int code);
    void silenceLastNote();
    void sendMediaCommand(const QString& command, const QString& failure);

    Runtime& runtime_;
    MidiOut& midiOut_;
    Media& media_;
    Dialogs& dialogs_;
    RandomNumbers random_;

    OpenOutput output_;
    std::function<void()> changed_;
    std::uint32_t lastMessage_ = 0;
    std::int16_t lastSendResult_ = 0;
    std::int32_t currentInstrument_ = 0;
    pitch::NoteIndex lastNoteIndex_ = 0;
    pitch::NoteIndex rangeLower_ = 0;
    pitch::NoteIndex rangeUpper_ = 0;
    pitch::NoteIndex drawnIndex_ = 0;
    std::optional<DrawnAhead> drawnAhead_;
    bool noteDrawn_ = false;
    bool autoSilence_ = false;
    bool mediaOpenFailed_ = false;
};
