#pragma once

#include "platform/midi_in.h"
#include "platform/midi_in_delivery.h"
#include "platform/windows/midi_inputs.h"

#include <memory>

/// The system's MIDI inputs.
class WindowsMidiIn : public MidiIn {
public:
    explicit WindowsMidiIn(Runtime* runtime) : delivery_(runtime) {}
    ~WindowsMidiIn() override { stop(); }
    WindowsMidiIn(const WindowsMidiIn&) = delete;
    WindowsMidiIn& operator=(const WindowsMidiIn&) = delete;

    std::vector<QString> inputNames() override;
    void listen(MidiInListener& listener) override;
    void stop() override;

private:
    MidiInDelivery delivery_;
    std::unique_ptr<MidiInputs> input_;
};
