#pragma once

#include "platform/linux/jack_watch.h"
#include "platform/linux/midi_ports.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The machine's MIDI inputs of all systems, ALSA before JACK, without the program's own outputs,
/// ports that only pass on what others send, and what JACK shows of ALSA's ports. Never throws.
std::vector<PortAddress> listMidiInputs();

/// How an input is called where the user reads it.
QString displayName(const PortAddress& address);

/// An input that is listened to. Never throws.
class MidiInPort {
public:
    /// Is given each channel message, packed, on a thread of the sound system.
    using Take = std::function<void(std::uint32_t message)>;

    /// Nothing if the input is not there or does not open.
    static std::unique_ptr<MidiInPort> open(const PortAddress& address, Take take);
    /// Nothing is taken any more.
    ~MidiInPort();
    MidiInPort(const MidiInPort&) = delete;
    MidiInPort& operator=(const MidiInPort&) = delete;

    const PortAddress& address() const { return address_; }

    /// Whether its port is still there: another of the same name may have taken its place. Where
    /// the user has parted the two, in JACK, they stay so. `exited` are ALSA's ports that went, as
    /// "20:0".
    bool isAlive(const std::vector<std::string>& exited) const;

private:
    struct Receiver;

    MidiInPort(PortAddress address, Receiver& receiver, std::optional<JackWatch::Port> source)
        : address_(std::move(address)), receiver_(receiver), source_(source) {}

    PortAddress address_;
    Receiver& receiver_;
    std::optional<JackWatch::Port> source_;  ///< of an input of JACK
};
