// From a message at a port of JACK, sent by another process, to the note-on that it causes: of a
// key in the composer, and of the judged answer in the drill.
//
//   midi_in_bench [notes, 500]        while a JACK server runs

#include "composer/composer_state.h"
#include "composer/frmComposer.h"
#include "core/midi_keyboard.h"
#include "core/services.h"
#include "figures.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/sound.h"
#include "shell/application.h"
#include "shell/main_window.h"
#include "silent_machine.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <jack/jack.h>
#include <jack/midiport.h>
#include <memory>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr auto kGiveUp = 5s;

using Message = std::array<unsigned char, 3>;

// The other process: a client of JACK that sends each message it is given and answers with the time
// at which it did.

struct Sender {
    jack_port_t* port;
    int socket;
};

int sendInCycle(jack_nframes_t frames, void* context) {
    const auto& sender = *static_cast<Sender*>(context);
    void* const buffer = jack_port_get_buffer(sender.port, frames);
    jack_midi_clear_buffer(buffer);
    Message message{};
    if (recv(sender.socket, message.data(), message.size(), MSG_DONTWAIT) !=
        static_cast<ssize_t>(message.size()))
        return 0;
    const std::int64_t now = figures::Clock::now().time_since_epoch().count();
    jack_midi_event_write(buffer, 0, message.data(), message.size());
    static_cast<void>(send(sender.socket, &now, sizeof now, 0));
    return 0;
}

[[noreturn]] void runSender(int socket) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    jack_client_t* client = jack_client_open("sender", JackNoStartServer, nullptr);
    if (!client)
        std::_Exit(EXIT_FAILURE);
    static Sender sender;
    sender = {jack_port_register(client, "keys", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0),
              socket};
    jack_set_process_callback(client, sendInCycle, &sender);
    jack_activate(client);
    while (true)
        pause();
}

/// Counts the messages that were sent and heard, and how long that took.
class Bench {
public:
    Bench(QtRuntime& runtime, ArrivalRecorder& midi, int socket)
        : runtime_(runtime), midi_(midi), socket_(socket) {}

    bool measure(const char* what, unsigned char note, int count) {
        std::vector<double> latency;
        for (int i = 0; i < count; ++i) {
            pumpFor(7ms + i % 5 * 1ms);
            const double seconds = once(note);
            if (seconds < 0) {
                std::fprintf(stderr, "%s: message %d was not answered\n", what, i);
                return false;
            }
            latency.push_back(seconds);
        }
        figures::print(what, latency, 1e-3, "ms");
        return true;
    }

    void pumpFor(Instant duration) {
        const Instant end = runtime_.now() + duration;
        while (runtime_.now() < end)
            runtime_.pump(end);
    }

private:
    void send(const Message& message) const {
        static_cast<void>(::send(socket_, message.data(), message.size(), 0));
    }

    /// Presses a key and lets it go; the seconds from one process to the note-on of the other.
    double once(unsigned char note) {
        midi_.arrivals.clear();
        send({0x90, note, 80});
        const Instant end = runtime_.now() + kGiveUp;
        const ArrivalRecorder::Arrival* heard = nullptr;
        while (!heard && runtime_.now() < end) {
            runtime_.pump(end);
            for (const auto& arrival : midi_.arrivals)
                heard = isNoteOn(arrival.message) && !heard ? &arrival : heard;
        }
        std::int64_t sent = 0;
        if (!heard || recv(socket_, &sent, sizeof sent, 0) != sizeof sent)
            return -1;
        const double seconds =
            figures::seconds(heard->when.time_since_epoch() - figures::Clock::duration(sent));
        send({0x80, note, 0});
        static_cast<void>(recv(socket_, &sent, sizeof sent, 0));
        return seconds;
    }

    QtRuntime& runtime_;
    ArrivalRecorder& midi_;
    int socket_;
};

}  // namespace

int main(int argc, char* argv[]) {
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, sockets) != 0)
        return EXIT_FAILURE;
    if (fork() == 0)
        runSender(sockets[1]);
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    application::prepare(app);
    const int notes = argc > 1 ? std::atoi(argv[1]) : 500;

    DesktopFolders folders;
    SilentMachine machine;
    auto& [runtime, midi, media, dialogs, funzioniMM] = machine;
    NoHelp help;
    const std::unique_ptr<Sound> sound = openSound(folders, &runtime);
    MidiKeyboard keyboard(runtime, sound->midiIn());
    const Services services{runtime, midi, dialogs, folders, help, funzioniMM, nullptr, &keyboard};
    MainWindow window(services);
    window.show();
    window.activateWindow();
    Bench bench(runtime, midi, sockets[0]);
    bench.pumpFor(4s);
    if (keyboard.names().isEmpty()) {
        std::fprintf(stderr, "no JACK server, or its port was not found\n");
        return EXIT_FAILURE;
    }
    window.findChild<QAction*>(QStringLiteral("Suono2"))->trigger();
    window.findChild<QPushButton*>(QStringLiteral("Start"))->click();
    // The first step of the first difficulty item, a Si, again and again.
    bool answered = bench.measure("MIDI key to the note of a judged answer", 59, notes);
    window.findChild<QPushButton*>(QStringLiteral("Start"))->click();

    ComposerState state;
    frmComposer composer(services, state, &window);
    QTimer::singleShot(500, &composer, [&] {
        answered = bench.measure("MIDI key to note-on in the composer", 60, notes) && answered;
        composer.close();
    });
    composer.exec();
    return answered ? EXIT_SUCCESS : EXIT_FAILURE;
}
