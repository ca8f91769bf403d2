#pragma once

#include "platform/runtime.h"

#include <QString>

#include <cstdint>
#include <optional>

/// An open output; 0 means that no device is open.
using MidiHandle = std::uint32_t;

/// Device ID of the default output ("the mapper"): where a user who chose nothing is heard.
constexpr int kMidiMapper = -1;

struct MidiOpenResult {
    int code = 0;           ///< 0 = success, else a code for `errorText`
    MidiHandle handle = 0;  ///< not 0 exactly when the code is 0
};

/// The machine's MIDI outputs. Messages are short messages of MIDI 1.0 packed into 32 bits: the
/// status byte in bits 0..7, the first data byte in bits 8..15, the second in bits 16..23.
/// Every operation answers with a code: 0 = success, anything else has an `errorText`.
class MidiOut {
public:
    virtual ~MidiOut() = default;

    /// How many real outputs there are now; they are the device IDs 0..n-1.
    virtual int deviceCount() = 0;

    /// The product name of a device (`kMidiMapper` or 0..n-1); nothing if it cannot be asked.
    virtual std::optional<QString> deviceName(int deviceId) = 0;

    virtual MidiOpenResult open(int deviceId) = 0;

    /// Sends one packed message. With handle 0 the message is dropped, which is a success: a
    /// machine without sound has been told so once, when the output did not open.
    virtual int send(MidiHandle handle, std::uint32_t message) = 0;

    /// Silences every note on every channel at once and keeps the programs. On the percussion
    /// channel a sound that was struck may ring out.
    virtual int reset(MidiHandle handle) = 0;

    /// Takes a message, or a reset, that is to be sent at an instant of the steady clock; one in
    /// the past is as soon as possible. What is planned and what is sent go out in the order of
    /// their instants, so that a message may have to wait for a planned one that is heard later.
    /// False if the output does not take it; nothing is sent then.
    virtual bool plan(MidiHandle /*handle*/, std::uint32_t /*message*/, Instant /*at*/) {
        return false;
    }
    virtual bool planReset(MidiHandle /*handle*/, Instant /*at*/) { return false; }

    /// Takes back everything planned whose instant has not come.
    virtual void cancelPlanned(MidiHandle /*handle*/) {}

    /// How much later than its instant a planned message is heard, as far as that is known.
    virtual Instant delay(MidiHandle /*handle*/) const { return Instant{0}; }

    /// Closes an output; what is planned is taken back.
    virtual int close(MidiHandle handle) = 0;

    /// Whether the device of an open handle is gone: its sound server ended, its port was
    /// unplugged. It is known at the latest when a message was refused or, of a planned one, soon
    /// after its instant. Such a handle can only be reopened or closed.
    virtual bool gone(MidiHandle handle) const = 0;

    /// Opens the device of a handle that is gone anew, if it is there again; the old handle is then
    /// closed. Never waits long: a device that takes its time is open at a later try.
    virtual MidiOpenResult reopen(MidiHandle handle) = 0;

    /// The system's text for a code, at most 127 characters.
    virtual QString errorText(int code) const = 0;
};
