#pragma once

#include <memory>

class Folders;
class Media;
class MidiOut;

/// The sound of this machine: one audio output shared by the built-in synthesizer, the tune and
/// the short sounds, and the machine's MIDI ports. Used from one thread.
class LinuxSound {
public:
    /// Returns at once; the audio output opens in the background.
    explicit LinuxSound(const Folders& folders);
    ~LinuxSound();
    LinuxSound(const LinuxSound&) = delete;
    LinuxSound& operator=(const LinuxSound&) = delete;

    MidiOut& midiOut();
    Media& media();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};
