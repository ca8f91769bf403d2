#include "platform/linux/midi_in_port.h"

#include "platform/linux/library_output.h"
#include "platform/linux/prompt_thread.h"
#include "platform/linux/rtmidi_calls.h"
#include "platform/midi_bytes.h"
#include "platform/midi_through.h"

#include <algorithm>
#include <mutex>
#include <utility>

using namespace rtmidi_calls;

/// RtMidi's object with what takes its messages.
///
/// One of JACK is kept, without a port, for the next input and to the end of the process: closing a
/// client right after another one sometimes waits for ever in the library, and crashes if the
/// server is gone.
struct MidiInPort::Receiver {
    std::unique_ptr<RtMidiIn> in;
    std::shared_ptr<JackWatch> jack;  ///< of an input of JACK
    std::mutex mutex;
    Take take;
    midi_bytes::Parser parser;

    static Receiver* make(RtMidi::Api api);
    void listen(Take newTake) {
        const std::lock_guard lock(mutex);
        take = std::move(newTake);
        parser = {};
    }
    void received(const std::vector<unsigned char>& bytes) {
        const std::lock_guard lock(mutex);
        if (take)
            parser.feed(bytes.data(), bytes.size(), take);
    }
    void putAway();
};

namespace {

/// The receivers of JACK that are not used now. Never destroyed.
template <typename Receiver>
std::vector<Receiver*>& idleReceivers() {
    static auto& idle = *new std::vector<Receiver*>;
    return idle;
}

std::unique_ptr<RtMidiIn> makeIn(RtMidi::Api api) {
    suppressLibraryOutput();
    std::unique_ptr<RtMidiIn> in;
    guarded([&] {
        in = std::make_unique<RtMidiIn>(api, kClientName);
        in->setErrorCallback(noteFailure);
        return true;
    });
    return in;
}

/// RtMidi calls a port of ALSA "client:port 20:0".
struct AlsaName {
    std::string client;
    std::string port;

    explicit AlsaName(const std::string& name)
        : client(name.substr(0, name.find(':'))), port(name.substr(name.find(':') + 1)) {
        port.erase(std::min(port.rfind(' '), port.size()));
    }
};

/// JACK's bridges repeat the names of ALSA's client and port.
bool isBridgeOf(const std::string& jackName, const AlsaName& alsa) {
    return jackName.find(alsa.client) != std::string::npos &&
           jackName.find(alsa.port) != std::string::npos;
}

}  // namespace

std::vector<PortAddress> listMidiInputs() {
    std::vector<PortAddress> inputs;
    const auto add = [&inputs](RtMidi::Api api, const std::string& name) {
        if (!name.empty() && !isOwn(name) && !midi_through::isName(name))
            inputs.push_back({api, name});
    };
    if (const auto alsa = makeIn(RtMidi::LINUX_ALSA)) {
        for (const std::string& name : portNames(*alsa))
            add(RtMidi::LINUX_ALSA, name);
    }
    const std::vector<PortAddress> ofAlsa = inputs;
    // RtMidi would open a client for the list alone.
    const auto jack = JackWatch::ofRunningServer();
    for (const std::string& name : jack ? jack->midiSources() : std::vector<std::string>()) {
        if (std::none_of(ofAlsa.begin(), ofAlsa.end(), [&name](const PortAddress& input) {
                return isBridgeOf(name, AlsaName(input.name));
            }))
            add(RtMidi::UNIX_JACK, name);
    }
    return inputs;
}

QString displayName(const PortAddress& address) {
    if (address.api != RtMidi::LINUX_ALSA)
        return QString::fromStdString(address.name);
    const auto [client, port] = AlsaName(address.name);
    // Devices repeat their name in that of the port; of programs it may be "out" alone.
    const bool tellsClient = port.find(client) != std::string::npos;
    return QString::fromStdString(tellsClient ? port : client + ": " + port);
}

MidiInPort::Receiver* MidiInPort::Receiver::make(RtMidi::Api api) {
    std::shared_ptr<JackWatch> jack;
    if (api == RtMidi::UNIX_JACK) {
        jack = JackWatch::ofRunningServer();
        if (!jack)
            return nullptr;
        auto& idle = idleReceivers<Receiver>();
        const auto kept = std::find_if(idle.begin(), idle.end(), [&jack](const Receiver* receiver) {
            return receiver->jack == jack;
        });
        if (kept != idle.end()) {
            Receiver* const receiver = *kept;
            idle.erase(kept);
            return receiver;
        }
    }
    auto in = makeIn(api);
    if (!in)
        return nullptr;
    auto* receiver = new Receiver{std::move(in), std::move(jack), {}, {}, {}};
    guarded([receiver] {
        receiver->in->setCallback(
            [](double, std::vector<unsigned char>* bytes, void* context) {
                static thread_local const bool prompt = wakePromptly();
                static_cast<void>(prompt);
                static_cast<Receiver*>(context)->received(*bytes);
            },
            receiver);
        return true;
    });
    return receiver;
}

void MidiInPort::Receiver::putAway() {
    listen(nullptr);
    if (!jack) {
        guarded([this] {
            in.reset();
            return true;
        });
        delete this;
        return;
    }
    if (!jack->serverGone())
        guarded([this] {
            in->closePort();
            return true;
        });
    idleReceivers<Receiver>().push_back(this);
}

std::unique_ptr<MidiInPort> MidiInPort::open(const PortAddress& address, Take take) {
    Receiver* const receiver = Receiver::make(static_cast<RtMidi::Api>(address.api));
    if (!receiver)
        return nullptr;
    const auto source = receiver->jack ? receiver->jack->portNamed(address.name) : std::nullopt;
    const auto number = portNumber(*receiver->in, address.name);
    if (!number || !openPort(*receiver->in, *number)) {
        receiver->putAway();
        return nullptr;
    }
    receiver->listen(std::move(take));
    return std::unique_ptr<MidiInPort>(new MidiInPort(address, *receiver, source));
}

MidiInPort::~MidiInPort() {
    receiver_.putAway();
}

bool MidiInPort::isAlive(const std::vector<std::string>& exited) const {
    if (receiver_.jack) {
        return !receiver_.jack->serverGone() && receiver_.jack->portNamed(address_.name) == source_;
    }
    return std::none_of(exited.begin(), exited.end(), [this](const std::string& port) {
        return address_.name.ends_with(' ' + port);
    });
}
