#pragma once

#include "platform/midi_out.h"
#include "platform/runtime.h"

#include <QString>

#include <cstdint>
#include <deque>
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

    /// Called whenever `isOpen`, `isLost`, `wasTried` or the device changes.
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

    /// Hands a message, or a reset, to the output ahead of its instant. `send` or `reset` at that
    /// instant then completes it; sent out of turn, or before its instant, it takes back everything
    /// planned, and what the output did not take is sent when its turn comes. So whatever happens
    /// in between, what is sent is the same without planning. To be completed or cancelled before
    /// events run.
    void plan(std::uint32_t message, Instant at);
    void planReset(Instant at);
    void cancelPlanned();

    /// When what is sent next is heard: later than its instant only if the output took it ahead.
    Instant nextHeard(Instant at) const;

    /// Whether an output is open; tries a lost one again first.
    bool ready();

    bool isOpen() const { return handle_ != 0 && !lost_; }
    bool isLost() const { return lost_; }

    /// Whether a device was opened yet, or was to be opened in vain.
    bool wasTried() const { return tried_; }

    /// The device that was opened last; it says something only while one is open or lost.
    int deviceId() const { return deviceId_; }
    const std::optional<QString>& deviceName() const { return deviceName_; }

private:
    struct Planned {
        std::optional<std::uint32_t> message;  ///< nothing for a reset
        Instant at;
    };

    bool completePlanned(std::optional<std::uint32_t> message);
    bool tryAgain();
    void tellChange() const;

    Runtime& runtime_;
    MidiOut& midiOut_;
    std::function<void()> changed_;
    MidiHandle handle_ = 0;
    bool lost_ = false;
    bool tried_ = false;
    Instant nextTry_{0};
    int deviceId_ = kMidiMapper;
    std::optional<QString> deviceName_;
    std::deque<Planned> planned_;
    std::uint32_t program_ = 0;  ///< the last program change; 0 if there was none
};
