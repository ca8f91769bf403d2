#include "platform/linux/midi_port_changes.h"

#include "platform/linux/jack_watch.h"
#include "platform/linux/library_output.h"

#include <alsa/asoundlib.h>
#include <array>
#include <cstdint>
#include <cstring>
#include <poll.h>
#include <string_view>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

/// Never closed: JACK's client, which is never closed either, writes to it.
int eventDescriptor() {
    static const int descriptor = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    return descriptor;
}

/// What appears when a sound system starts: a file of the JACK server, the sequencer's device, the
/// folder of the first sound device.
bool isOfSoundSystem(std::string_view file) {
    return file.starts_with("jack") || file == "seq" || file == "snd";
}

}  // namespace

/// What the ALSA sequencer announces.
class MidiPortChanges::Announcements {
public:
    /// Nothing if there is no sequencer.
    static std::unique_ptr<Announcements> open() {
        suppressLibraryOutput();
        snd_seq_t* sequencer = nullptr;
        if (snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK) != 0)
            return nullptr;
        std::unique_ptr<Announcements> announcements(new Announcements(sequencer));
        snd_seq_set_client_name(sequencer, "Cantavista watch");
        const int port = snd_seq_create_simple_port(
            sequencer, "announcements", SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_NO_EXPORT,
            SND_SEQ_PORT_TYPE_APPLICATION);
        const int connected = snd_seq_connect_from(sequencer, port, SND_SEQ_CLIENT_SYSTEM,
                                                   SND_SEQ_PORT_SYSTEM_ANNOUNCE);
        return connected == 0 ? std::move(announcements) : nullptr;
    }
    ~Announcements() { snd_seq_close(sequencer_); }
    Announcements(const Announcements&) = delete;
    Announcements& operator=(const Announcements&) = delete;

    void addTo(std::vector<pollfd>& descriptors) const {
        const auto before = descriptors.size();
        const auto count =
            static_cast<std::size_t>(snd_seq_poll_descriptors_count(sequencer_, POLLIN));
        descriptors.resize(before + count);
        snd_seq_poll_descriptors(sequencer_, descriptors.data() + before,
                                 static_cast<unsigned int>(count), POLLIN);
    }

    /// Whether a port came or went.
    bool read(std::vector<std::string>& exited) const {
        bool changed = false;
        snd_seq_event_t* event = nullptr;
        while (true) {
            const int answer = snd_seq_event_input(sequencer_, &event);
            const bool someWereLost = answer == -ENOSPC;
            if (answer < 0 && !someWereLost)
                return changed;
            changed = changed || someWereLost || event->type == SND_SEQ_EVENT_PORT_START ||
                      event->type == SND_SEQ_EVENT_PORT_EXIT;
            if (!someWereLost && event->type == SND_SEQ_EVENT_PORT_EXIT) {
                const snd_seq_addr_t& port = event->data.addr;
                exited.push_back(std::to_string(port.client) + ':' + std::to_string(port.port));
            }
        }
    }

private:
    explicit Announcements(snd_seq_t* sequencer) : sequencer_(sequencer) {}

    snd_seq_t* sequencer_;
};

MidiPortChanges::MidiPortChanges() : files_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    for (const char* folder : {"/dev/shm", "/dev/snd"})
        inotify_add_watch(files_, folder, IN_CREATE);
    if (access("/dev/snd", F_OK) != 0)
        inotify_add_watch(files_, "/dev", IN_CREATE);
}

MidiPortChanges::~MidiPortChanges() {
    close(files_);
}

void MidiPortChanges::wake() {
    constexpr std::uint64_t kOne = 1;
    static_cast<void>(!write(eventDescriptor(), &kOne, sizeof kOne));
}

MidiPortChanges::Change MidiPortChanges::wait(std::optional<std::chrono::milliseconds> atMost) {
    if (!alsa_)
        alsa_ = Announcements::open();
    if (const auto jack = JackWatch::ofRunningServer())
        jack->reportChanges(eventDescriptor());
    std::vector<pollfd> descriptors{{eventDescriptor(), POLLIN, 0}, {files_, POLLIN, 0}};
    if (alsa_)
        alsa_->addTo(descriptors);
    const int timeout = atMost ? static_cast<int>(atMost->count()) : -1;
    Change change;
    while (poll(descriptors.data(), descriptors.size(), timeout) > 0) {
        std::uint64_t events = 0;
        const bool woken = read(eventDescriptor(), &events, sizeof events) > 0;
        change.starts = aSystemStarts();
        const bool announced = alsa_ && alsa_->read(change.exited);
        if (woken || change.starts || announced)
            break;
    }
    return change;
}

/// Reads what was created in the folders.
bool MidiPortChanges::aSystemStarts() const {
    bool starts = false;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    while (true) {
        const ssize_t size = read(files_, buffer.data(), buffer.size());
        if (size <= 0)
            return starts;
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* const name = buffer.data() + at + sizeof event;
            starts = starts || (event.len > 0 && isOfSoundSystem(name));
            at += sizeof event + event.len;
        }
    }
}
