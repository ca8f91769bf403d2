#include "platform/linux/jack_watch.h"

#include "platform/linux/library_output.h"

#include <jack/jack.h>

std::unique_ptr<JackWatch> JackWatch::start() {
    suppressLibraryOutput();
    std::unique_ptr<JackWatch> watch(new JackWatch);
    jack_client_t* client = jack_client_open("Cantavista watch", JackNoStartServer, nullptr);
    if (!client)
        return nullptr;
    watch->client_ = client;
    jack_on_shutdown(
        client, [](void* gone) { static_cast<std::atomic<bool>*>(gone)->store(true); },
        watch->gone_.get());
    return watch;
}

double JackWatch::sampleRate() const {
    return jack_get_sample_rate(static_cast<jack_client_t*>(client_));
}

JackWatch::~JackWatch() {
    if (serverGone())
        static_cast<void>(gone_.release());
    else if (client_)
        jack_client_close(static_cast<jack_client_t*>(client_));
}
