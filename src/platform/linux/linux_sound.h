#pragma once

#include "audio/wave_render.h"
#include "platform/linux/linux_midi_in.h"
#include "platform/sound.h"

/// One audio output shared by the built-in synthesizer, the tune and the short sounds, and the
/// machine's MIDI ports.
class LinuxSound : public Sound {
public:
    /// The audio output opens in the background, with the first file or output that is opened.
    explicit LinuxSound(const Folders& folders, Runtime* runtime = nullptr);
    ~LinuxSound() override;
    LinuxSound(const LinuxSound&) = delete;
    LinuxSound& operator=(const LinuxSound&) = delete;

    MidiOut& midiOut() override;
    Media& media() override;
    MidiIn& midiIn() override { return midiIn_; }
    WaveRenderer* waveRenderer() override { return &waveRenderer_; }
    QString renderingPriority() const override;

private:
    struct Parts;
    Parts& parts();

    const Folders& folders_;
    Runtime* runtime_;
    MixerWaveRenderer waveRenderer_;
    LinuxMidiIn midiIn_;
    std::unique_ptr<Parts> parts_;
};
