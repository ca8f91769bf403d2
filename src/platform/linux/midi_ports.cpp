#include "platform/linux/midi_ports.h"

#include "audio/steady_time.h"
#include "platform/linux/jack_watch.h"
#include "platform/linux/library_output.h"
#include "platform/linux/prompt_thread.h"
#include "platform/linux/rtmidi_calls.h"
#include "platform/midi_bytes.h"

#include <array>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>

namespace {

using namespace rtmidi_calls;

constexpr std::int64_t kCheckInterval = 100'000'000;
/// A cycle of JACK rarely lasts longer than 43 ms (2048 frames at 48 kHz).
constexpr std::int64_t kConnectionTimeout = 200'000'000;
constexpr std::uint32_t kDrumChannel = 9;

std::unique_ptr<RtMidiOut> makeOut(RtMidi::Api api) {
    suppressLibraryOutput();
    std::unique_ptr<RtMidiOut> out;
    guarded([&] {
        out = std::make_unique<RtMidiOut>(api, kClientName);
        out->setErrorCallback(noteFailure);
        return true;
    });
    return out;
}

/// JACK's library connects ports in the graph of the next cycle, and what is sent before that cycle
/// reaches nobody. The first message sent is the instrument, so it is worth the wait.
void waitForConnection(const JackWatch& jack, const std::string& port, std::size_t before) {
    const std::int64_t end = steadyNow() + kConnectionTimeout;
    while (!jack.serverGone() && jack.connectionCount(port) <= before && steadyNow() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

}  // namespace

std::vector<PortAddress> listMidiPorts() {
    std::vector<PortAddress> ports;
    const auto jack = JackWatch::ofRunningServer();
    for (const RtMidi::Api api : kApis) {
        // Without a server RtMidi leaks memory at every question about JACK's ports.
        if (api == RtMidi::UNIX_JACK && !jack)
            continue;
        const auto out = makeOut(api);
        if (!out)
            continue;
        for (const std::string& name : portNames(*out))
            if (!name.empty() && !isOwn(name))
                ports.push_back({api, name});
    }
    return ports;
}

std::unique_ptr<MidiPort> MidiPort::open(const PortAddress& address, SoundCode& code) {
    const bool isJack = address.api == RtMidi::UNIX_JACK;
    auto jack = isJack ? JackWatch::ofRunningServer() : nullptr;
    auto out = isJack && !jack ? nullptr : makeOut(static_cast<RtMidi::Api>(address.api));
    const auto number = out ? portNumber(*out, address.name) : std::nullopt;
    if (!number) {
        code = SoundCode::DeviceVanished;
        return nullptr;
    }
    const std::size_t connections = jack ? jack->connectionCount(address.name) : 0;
    if (!openPort(*out, *number)) {
        code = SoundCode::DeviceBusy;
        return nullptr;
    }
    if (jack)
        waitForConnection(*jack, address.name, connections);
    code = SoundCode::Ok;
    return std::unique_ptr<MidiPort>(new MidiPort(std::move(out), std::move(jack), address.name));
}

MidiPort::MidiPort(std::unique_ptr<RtMidiOut> out, std::shared_ptr<JackWatch> jack,
                   std::string name)
    : out_(std::move(out)),
      jack_(std::move(jack)),
      name_(std::move(name)),
      sender_([this](PlannedSender::Message message) { return transmit(message) ? 0 : 1; },
              wakeInRealTime) {}

MidiPort::~MidiPort() {
    sender_.stop();
    for (const std::uint32_t noteOff : std::set<std::uint32_t>(sounding_))
        send(noteOff);
    if (jack_ && jack_->serverGone()) {
        static_cast<void>(out_.release());  // closing it would wait, and crash
        return;
    }
    guarded([this] {
        out_.reset();
        return true;
    });
}

SoundCode MidiPort::send(std::uint32_t packed) {
    return stillThere() && sender_.send(packed) == 0 ? SoundCode::Ok : SoundCode::DeviceVanished;
}

SoundCode MidiPort::reset() {
    return stillThere() && sender_.send(std::nullopt) == 0 ? SoundCode::Ok
                                                           : SoundCode::DeviceVanished;
}

SoundCode MidiPort::plan(PlannedSender::Message message, Instant at) {
    if (!stillThere())
        return SoundCode::DeviceVanished;
    sender_.plan(message, at);
    return SoundCode::Ok;
}

/// On the sending thread or, for what is sent now, on the caller's.
bool MidiPort::transmit(PlannedSender::Message message) {
    if (message)
        return transmit(*message);
    for (std::uint32_t channel = 0; channel < 16; ++channel) {
        const std::uint32_t off =
            channel == kDrumChannel ? midi_bytes::kAllNotesOff : midi_bytes::kAllSoundsOff;
        if (!transmit(midi_bytes::kController | channel | off << 8))
            return false;
    }
    sounding_.clear();
    return true;
}

bool MidiPort::transmit(std::uint32_t packed) {
    if (jack_ && jack_->serverGone())
        gone_ = true;
    if (gone_)
        return false;
    const std::array<unsigned char, 3> bytes{static_cast<unsigned char>(packed),
                                             static_cast<unsigned char>(packed >> 8),
                                             static_cast<unsigned char>(packed >> 16)};
    bool failed = false;
    try {
        // A failure goes to the callback, so that nothing is printed either.
        out_->setErrorCallback(noteFailure, &failed);
        out_->sendMessage(bytes.data(), 1 + midi_bytes::dataCount(packed));
        out_->setErrorCallback(noteFailure);
    } catch (const std::exception&) {
        failed = true;
    }
    if (failed)
        gone_ = true;
    else
        noteSounding(packed);
    return !failed;
}

void MidiPort::noteSounding(std::uint32_t packed) {
    if (midi_bytes::kindOf(packed) != midi_bytes::kNoteOn)
        return;
    const std::uint32_t noteOff = packed & 0xFFFFu;
    if (packed == noteOff)
        sounding_.erase(noteOff);
    else
        sounding_.insert(noteOff);
}

bool MidiPort::stillThere() {
    if (jack_ && jack_->serverGone())
        gone_ = true;
    // Sending to a port that was unplugged, or over a server that died, reports nothing. The list
    // tells; it is not read for every message of a chord.
    const std::int64_t now = steadyNow();
    if (gone_ || now - checked_ < kCheckInterval)
        return !gone_;
    checked_ = now;
    if (!sender_.exclusively([this] { return portNumber(*out_, name_).has_value(); }))
        gone_ = true;
    return !gone_;
}
