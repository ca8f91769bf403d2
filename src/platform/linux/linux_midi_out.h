#pragma once

#include "platform/linux/midi_ports.h"
#include "platform/midi_out.h"

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class AudioEngine;
class AudioStream;
class Runtime;

/// The built-in synthesizer as the default output, and the machine's MIDI ports.
class LinuxMidiOut : public MidiOut {
public:
    /// With a runtime the window stays painted while the synthesizer's stream opens, and the end of
    /// the program is not kept waiting.
    LinuxMidiOut(AudioEngine& engine, AudioStream& stream, Runtime* runtime = nullptr);
    ~LinuxMidiOut() override;

    int deviceCount() override;
    std::optional<QString> deviceName(int deviceId) override;
    MidiOpenResult open(int deviceId) override;
    int send(MidiHandle handle, std::uint32_t message) override;
    int reset(MidiHandle handle) override;
    bool plan(MidiHandle handle, std::uint32_t message, Instant at) override;
    bool planReset(MidiHandle handle, Instant at) override;
    void cancelPlanned(MidiHandle handle) override;
    Instant delay(MidiHandle handle) const override;
    int close(MidiHandle handle) override;
    bool gone(MidiHandle handle) const override;
    MidiOpenResult reopen(MidiHandle handle) override;
    QString errorText(int code) const override;

private:
    struct Output {
        PortAddress address;             // of a port
        std::unique_ptr<MidiPort> port;  // none: the synthesizer
        bool gone = false;
    };

    SoundCode openSynthesizer(std::optional<std::chrono::milliseconds> atMost);
    bool waitForStream();
    SoundCode openPort(int deviceId, Output& output);
    MidiOpenResult answer(SoundCode code, Output output);
    template <typename ToEngine, typename ToPort>
    int route(MidiHandle handle, ToEngine toEngine, ToPort toPort);

    AudioEngine& engine_;
    AudioStream& stream_;
    Runtime* runtime_;
    std::vector<PortAddress> ports_;  // as last counted
    bool counted_ = false;
    std::map<MidiHandle, Output> open_;
    MidiHandle lastHandle_ = 0;
    QString device_;  // the port that was used last, for the text of its failure
};
