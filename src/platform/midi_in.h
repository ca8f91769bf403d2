#pragma once

#include "platform/runtime.h"

#include <QString>

#include <cstdint>
#include <vector>

/// An input that is listened to. No number is given twice.
struct MidiInput {
    int id = 0;
    QString name;
};

/// A short message of MIDI 1.0 as an input received it, packed as `MidiOut` packs them.
struct MidiInMessage {
    Instant at{0};  ///< when it came, on the steady clock
    int input = 0;
    std::uint32_t message = 0;
};

/// Is called in a pass of the runtime, where the user's keys and clicks are handled too.
class MidiInListener {
public:
    virtual ~MidiInListener() = default;

    /// An input came or went; these are all there are now. One that went sends no more.
    virtual void inputsChanged(const std::vector<MidiInput>& inputs) = 0;

    /// Notes, the damper pedal and the controllers that end notes; an input keeps the rest to
    /// itself.
    virtual void received(const MidiInMessage& message) = 0;
};

/// The machine's MIDI inputs. All are listened to but the program's own outputs and ports that only
/// pass on what others send. Inputs that come later are found without being looked for.
class MidiIn {
public:
    virtual ~MidiIn() = default;

    /// The names of the inputs there are now.
    virtual std::vector<QString> inputNames() = 0;

    /// Listens until `stop`; the inputs there are then are told soon. Returns at once.
    virtual void listen(MidiInListener& listener) = 0;
    virtual void stop() = 0;
};
