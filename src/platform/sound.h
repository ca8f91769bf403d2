#pragma once

#include <QString>

#include <memory>

class Folders;
class Media;
class MidiIn;
class MidiOut;
class Runtime;
class WaveRenderer;

/// The sound of this machine. Used from one thread. No device is touched before `midiOut` or
/// `media` is asked for.
class Sound {
public:
    virtual ~Sound() = default;

    virtual MidiOut& midiOut() = 0;
    virtual Media& media() = 0;

    /// Not touched either before it is asked for.
    virtual MidiIn& midiIn() = 0;

    /// Nothing where the system's sound has no synthesizer that can work without a device.
    virtual WaveRenderer* waveRenderer() { return nullptr; }

    /// What priority the system grants to the thread that renders sound, in the user's words. Empty
    /// where the system renders it.
    virtual QString renderingPriority() const { return {}; }
};

/// Makes the sound of the system that the program was built for; returns at once, whatever the
/// state of the machine's devices. Waiting for a device goes by the runtime; without one nothing is
/// waited for. Each system's folder implements it.
std::unique_ptr<Sound> openSound(const Folders& folders, Runtime* runtime = nullptr);
