#include "platform/linux/jack_watch.h"

#include "platform/linux/library_output.h"
#include "platform/midi_through.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cstdint>
#include <jack/jack.h>
#include <jack/midiport.h>
#include <mutex>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

/// Whether a server may be running: where none is, asking for it costs 2 MB for the database of
/// JACK's library. JACK's own server has files; PipeWire's, which the same calls reach where its
/// library stands in for JACK's, has a socket.
bool serverMayRun() {
    if (qEnvironmentVariableIsSet("PIPEWIRE_REMOTE"))
        return true;
    for (const char* folder : {"PIPEWIRE_RUNTIME_DIR", "XDG_RUNTIME_DIR"}) {
        if (QFile::exists(qEnvironmentVariable(folder) + QLatin1String("/pipewire-0")))
            return true;
    }
    return QFile::exists(QStringLiteral("/run/pipewire/pipewire-0")) ||
           !QDir("/dev/shm", "jack*", QDir::NoSort, QDir::AllEntries | QDir::System).isEmpty();
}

/// The name of a device's port is often that of the driver; the device is named by an alias.
bool passesOn(jack_client_t* client, const char* name) {
    jack_port_t* port = jack_port_by_name(client, name);
    const auto size = static_cast<std::size_t>(jack_port_name_size());
    std::vector<char> first(size);
    std::vector<char> second(size);
    std::array<char*, 2> aliases{first.data(), second.data()};
    const int count = port ? jack_port_get_aliases(port, aliases.data()) : 0;
    for (int i = 0; i < count; ++i) {
        if (midi_through::isName(aliases[static_cast<std::size_t>(i)]))
            return true;
    }
    return false;
}

}  // namespace

/// Every watch is kept to the end of the process: the library may write to one whose server is
/// gone.
std::shared_ptr<JackWatch> JackWatch::ofRunningServer() {
    static std::mutex mutex;
    static auto& watches = *new std::vector<std::shared_ptr<JackWatch>>;
    const std::lock_guard lock(mutex);
    if (!watches.empty() && !watches.back()->serverGone())
        return watches.back();
    auto watch = start();
    if (watch)
        watches.push_back(watch);
    return watch;
}

std::shared_ptr<JackWatch> JackWatch::start() {
    if (!serverMayRun())
        return nullptr;
    suppressLibraryOutput();
    std::shared_ptr<JackWatch> watch(new JackWatch);
    jack_client_t* client = jack_client_open("Cantavista watch", JackNoStartServer, nullptr);
    if (!client)
        return nullptr;
    watch->client_ = client;
    jack_on_shutdown(
        client,
        [](void* context) {
            auto* lost = static_cast<JackWatch*>(context);
            lost->gone_.store(true);
            lost->report();
        },
        watch.get());
    return watch;
}

void JackWatch::report() const {
    constexpr std::uint64_t kOne = 1;
    if (const int descriptor = changes_.load(); descriptor >= 0)
        static_cast<void>(!write(descriptor, &kOne, sizeof kOne));
}

void JackWatch::reportChanges(int eventDescriptor) {
    changes_.store(eventDescriptor);
    activate();
}

/// A client without a callback for sound has no part in the server's cycles.
void JackWatch::activate() {
    if (std::exchange(activated_, true))
        return;
    auto* client = static_cast<jack_client_t*>(client_);
    jack_set_port_registration_callback(
        client,
        [](jack_port_id_t port, int comes, void* watch) {
            static_cast<JackWatch*>(watch)->portChanged(port, comes != 0);
        },
        this);
    jack_activate(client);
}

/// On a thread of the library.
void JackWatch::portChanged(std::uint32_t port, bool comes) {
    const jack_port_t* gone =
        comes ? nullptr : jack_port_by_id(static_cast<jack_client_t*>(client_), port);
    if (gone) {
        const std::lock_guard lock(mutex_);
        ++departures_[jack_port_uuid(gone)];
    }
    report();
}

std::optional<JackWatch::Port> JackWatch::portNamed(const std::string& name) {
    activate();
    const jack_port_t* port = jack_port_by_name(static_cast<jack_client_t*>(client_), name.c_str());
    if (!port)
        return std::nullopt;
    const std::uint64_t id = jack_port_uuid(port);
    const std::lock_guard lock(mutex_);
    return Port{id, departures_[id]};
}

std::vector<std::string> JackWatch::midiSources() const {
    auto* client = static_cast<jack_client_t*>(client_);
    const char** names = jack_get_ports(client, nullptr, JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput);
    std::vector<std::string> sources;
    for (std::size_t i = 0; names && names[i]; ++i) {
        if (!passesOn(client, names[i]))
            sources.emplace_back(names[i]);
    }
    jack_free(names);
    return sources;
}

double JackWatch::sampleRate() const {
    return jack_get_sample_rate(static_cast<jack_client_t*>(client_));
}

std::size_t JackWatch::connectionCount(const std::string& port) const {
    auto* client = static_cast<jack_client_t*>(client_);
    const jack_port_t* found = jack_port_by_name(client, port.c_str());
    const char** names = found ? jack_port_get_all_connections(client, found) : nullptr;
    std::size_t count = 0;
    while (names && names[count])
        ++count;
    jack_free(names);
    return count;
}
