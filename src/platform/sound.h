#pragma once

#include <memory>

class Folders;
class Media;
class MidiOut;

/// The sound of this machine. Used from one thread.
class Sound {
public:
    virtual ~Sound() = default;

    virtual MidiOut& midiOut() = 0;
    virtual Media& media() = 0;
};

/// Makes the sound of the system that the program was built for; returns at once, whatever the
/// state of the machine's devices. Each system's folder implements it.
std::unique_ptr<Sound> openSound(const Folders& folders);
