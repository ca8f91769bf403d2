#pragma once

#include "platform/sound.h"

/// One audio output shared by the built-in synthesizer, the tune and the short sounds, and the
/// machine's MIDI ports.
class LinuxSound : public Sound {
public:
    /// Returns at once; the audio output opens in the background.
    explicit LinuxSound(const Folders& folders);
    ~LinuxSound() override;
    LinuxSound(const LinuxSound&) = delete;
    LinuxSound& operator=(const LinuxSound&) = delete;

    MidiOut& midiOut() override;
    Media& media() override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};
