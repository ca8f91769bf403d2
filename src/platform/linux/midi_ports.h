#pragma once

#include "platform/linux/sound_code.h"
#include "platform/planned_sender.h"

#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

class JackWatch;
class RtMidiOut;

/// A port as it was listed: its name is what finds it again, since its number may change.
struct PortAddress {
    int api = 0;
    std::string name;

    bool operator==(const PortAddress&) const = default;
};

/// The machine's MIDI output ports of all systems, ALSA before JACK, without the program's own
/// inputs. Never throws.
std::vector<PortAddress> listMidiPorts();

/// An open port. Never throws.
class MidiPort {
public:
    /// Nothing, and why in `code`, if the port is not there or does not open.
    static std::unique_ptr<MidiPort> open(const PortAddress& address, SoundCode& code);
    /// Ends every note that sounds.
    ~MidiPort();
    MidiPort(const MidiPort&) = delete;
    MidiPort& operator=(const MidiPort&) = delete;

    QString name() const { return QString::fromStdString(name_); }

    SoundCode send(std::uint32_t packed);

    /// All sounds off on every channel, on that of the percussion all notes off.
    SoundCode reset();

    /// The same at an instant, on the sending thread. A failure then is told by `gone`.
    SoundCode plan(PlannedSender::Message message, Instant at);
    void cancelPlanned() { sender_.cancel(); }
    bool gone() const { return gone_.load(); }

private:
    MidiPort(std::unique_ptr<RtMidiOut> out, std::shared_ptr<JackWatch> jack, std::string name);
    bool stillThere();
    bool transmit(PlannedSender::Message message);
    bool transmit(std::uint32_t packed);
    void noteSounding(std::uint32_t packed);

    std::unique_ptr<RtMidiOut> out_;
    std::shared_ptr<JackWatch> jack_;  // for a port of JACK
    std::string name_;
    std::int64_t checked_ = 0;
    std::atomic<bool> gone_ = false;
    std::set<std::uint32_t> sounding_;  // the note-ons that have not ended, with velocity 0
    PlannedSender sender_;
};
