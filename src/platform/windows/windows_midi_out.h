#pragma once

#include "platform/midi_out.h"
#include "platform/windows/midi_output.h"

/// The system's MIDI outputs and its mapper.
class WindowsMidiOut : public MidiOut {
public:
    int deviceCount() override;
    std::optional<QString> deviceName(int deviceId) override;
    MidiOpenResult open(int deviceId) override;
    int send(MidiHandle handle, std::uint32_t message) override;
    int reset(MidiHandle handle) override;
    bool plan(MidiHandle handle, std::uint32_t message, Instant at) override;
    bool planReset(MidiHandle handle, Instant at) override;
    void cancelPlanned(MidiHandle handle) override { output_.cancelPlanned(handle); }
    int close(MidiHandle handle) override;
    bool gone(MidiHandle handle) const override { return output_.gone(handle); }
    MidiOpenResult reopen(MidiHandle handle) override;
    QString errorText(int code) const override;

private:
    MidiOutput output_;
};
