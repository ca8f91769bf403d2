#pragma once

#include "platform/midi_out.h"
#include "platform/runtime.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

/// The one MIDI output that the program holds open.
///
/// An output whose device is gone counts as not open: what is sent is dropped, as without any
/// output. The next program change or note-on tries to open it again, at most once in
/// `kRetryInterval`, and first restores the instrument.
class OpenOutput {
public:
    static constexpr Instant kRetryInterval = std::chrono::milliseconds(500);

    OpenOutput(Runtime& runtime, MidiOut& midiOut) : runtime_(runtime), midiOut_(midiOut) {}

    /// Called whenever `isOpen`, `isLost` or the device changes.
    void onChange(std::function<void()> handler) { changed_ = std::move(handler); }

    /// Opens a device in place of a lost one. Answers with the code of `MidiOut::open`; after a
    /// failure the lost one stays lost.
    int open(int deviceId);

    /// Closes the open output, or gives a lost one up. A failure keeps it.
    int close();

    /// Sends a packed message. The code that tells of a loss is answered once.
    int send(std::uint32_t message);

    /// Silences every note.
    void reset();

    /// Whether an output is open; tries a lost one again first.
    bool ready();

    bool isOpen() const { return handle_ != 0 && !lost_; }
    bool isLost() const { return lost_; }

    /// The device that was opened last; it says something only while one is open or lost.
    int deviceId() const { return deviceId_; }
    const std::optional<QString>& deviceName() const { return deviceName_; }

private:
    bool tryAgain();
    void tellChange() const;

    Runtime& runtime_;
    MidiOut& midiOut_;
    std::function<void()> changed_;
    MidiHandle handle_ = 0;
    bool lost_ = false;
    Instant nextTry_{0};
    int deviceId_ = kMidiMapper;
    std::optional<QString> deviceName_;
    std::uint32_t program_ = 0;  ///< the last program change; 0 if there was none
};
