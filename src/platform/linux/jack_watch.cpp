#include "platform/linux/jack_watch.h"

#include "platform/linux/library_output.h"

#include <jack/jack.h>
#include <mutex>
#include <vector>

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
    suppressLibraryOutput();
    std::shared_ptr<JackWatch> watch(new JackWatch);
    jack_client_t* client = jack_client_open("Cantavista watch", JackNoStartServer, nullptr);
    if (!client)
        return nullptr;
    watch->client_ = client;
    jack_on_shutdown(
        client, [](void* gone) { static_cast<std::atomic<bool>*>(gone)->store(true); },
        &watch->gone_);
    return watch;
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
