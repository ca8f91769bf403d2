#pragma once

#include "platform/midi_in.h"
#include "platform/midi_in_delivery.h"

#include <memory>

/// The MIDI inputs of ALSA and JACK. A thread of its own, which sleeps until ports come or go,
/// opens and closes them, as either may take long.
class LinuxMidiIn : public MidiIn {
public:
    /// Without a runtime nothing can be listened to.
    explicit LinuxMidiIn(Runtime* runtime) : delivery_(runtime) {}
    ~LinuxMidiIn() override { stop(); }
    LinuxMidiIn(const LinuxMidiIn&) = delete;
    LinuxMidiIn& operator=(const LinuxMidiIn&) = delete;

    std::vector<QString> inputNames() override;
    void listen(MidiInListener& listener) override;
    void stop() override;

private:
    class Inputs;

    MidiInDelivery delivery_;
    std::shared_ptr<Inputs> inputs_;
};
