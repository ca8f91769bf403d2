#include "beat_player.h"

#include "click.h"
#include "composer/melody/composition.h"
#include "composer/melody/melody_editor.h"
#include "composer/playback/articulation.h"
#include "composer/playback/melody_player.h"
#include "core/instruments.h"
#include "core/services.h"
#include "eartraining/ear_training_state.h"
#include "eartraining/frmInto.h"
#include "metronome/frmMetro.h"
#include "metronome/metronome_host.h"
#include "no_view.h"
#include "platform/linux/linux_sound.h"
#include "shell/application.h"
#include "silent_machine.h"

#include <QApplication>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <array>
#include <cmath>

namespace {

using namespace std::chrono_literals;
using beat::kPeriod;
using beat::kPortName;

constexpr int kTempo = 120;
static_assert(kPeriod * kTempo == 60);
constexpr int kMelodyTempo = 240;
constexpr int kWoodblock = 115;         ///< a short sound with a clear beginning
constexpr Instant kStartTune = 2200ms;  ///< before any window is used; the stream runs meanwhile

class Host : public QWidget, public MetronomeHost {
public:
    void setMetronomeRunning(bool) override {}
    void focusStart() override {}
    const QWidget& startColourSource() const override { return *this; }
    const QWidget& stopColourSource() const override { return *this; }
};

void printDue(double instant) {
    std::printf("%.6f\n", instant);
}

/// An output that can print the instants of the note-ons which it plans.
class PrintingOut : public MidiOut {
public:
    explicit PrintingOut(MidiOut& out) : out_(out) {}

    void printPlanned() { prints_ = true; }

    bool plan(MidiHandle handle, std::uint32_t message, Instant at) override {
        const bool noteOn = (message & 0xF0) == 0x90 && message >> 16 != 0;
        if (prints_ && noteOn)
            printDue(std::chrono::duration<double>(at).count());
        return out_.plan(handle, message, at);
    }
    bool planReset(MidiHandle handle, Instant at) override { return out_.planReset(handle, at); }
    void cancelPlanned(MidiHandle handle) override { out_.cancelPlanned(handle); }
    Instant delay(MidiHandle handle) const override { return out_.delay(handle); }
    int deviceCount() override { return out_.deviceCount(); }
    std::optional<QString> deviceName(int id) override { return out_.deviceName(id); }
    MidiOpenResult open(int id) override { return out_.open(id); }
    int send(MidiHandle handle, std::uint32_t message) override {
        return out_.send(handle, message);
    }
    int reset(MidiHandle handle) override { return out_.reset(handle); }
    int close(MidiHandle handle) override { return out_.close(handle); }
    bool gone(MidiHandle handle) const override { return out_.gone(handle); }
    MidiOpenResult reopen(MidiHandle handle) override { return out_.reopen(handle); }
    QString errorText(int code) const override { return out_.errorText(code); }

private:
    MidiOut& out_;
    bool prints_ = false;
};

/// The program's real parts, with its output open.
struct Machine {
    NoFolders folders;
    QtRuntime runtime;
    LinuxSound sound{folders, &runtime};
    PrintingOut out{sound.midiOut()};
    NoDialogs dialogs;
    NoHelp help;
    FunzioniMM funzioniMM{runtime, out, sound.media(), dialogs, [] { return 0.0F; }};

    /// The built-in synthesizer, or the port of this bench.
    bool open(bool port) {
        int device = kMidiMapper;
        if (port) {
            const int count = sound.midiOut().deviceCount();
            for (int id = 0; id < count; ++id)
                if (sound.midiOut().deviceName(id)->contains(QLatin1String(kPortName)))
                    device = id;
            if (device == kMidiMapper)
                return false;
        }
        return funzioniMM.MidiOpen(device);
    }

    /// Lets events run for a while, as between two acts of a user.
    void run(Instant duration) {
        const Instant end = runtime.now() + duration;
        while (runtime.now() < end)
            runtime.pump(end);
    }
};

void playMetronome(Machine& machine, int clicks) {
    MetronomeState state;
    state.MetroPattern = QStringLiteral("a");  // every click the same sound
    Host host;
    frmMetro frame(machine.runtime, machine.funzioniMM, state, host, &host);
    (new QVBoxLayout(&host))->addWidget(&frame);
    host.show();
    frame.mnuMetro_Click();
    frame.findChild<QScrollBar*>(QStringLiteral("MetroTempoS"))->setValue(kTempo);
    machine.run(kStartTune);
    QTimer::singleShot(std::chrono::milliseconds(std::lround(1000 * kPeriod * (clicks + 0.5))),
                       Qt::PreciseTimer, &frame, &frmMetro::cmdSSmetro_Click);
    frame.cmdSSmetro_Click();
    for (int i = 0; i < clicks; ++i)
        printDue(kPeriod * i);
}

void playMelody(Machine& machine, int entries) {
    constexpr std::array kDurations{0.25, 0.5, 0.375, 1.0, 0.5, 0.75};
    MelodyFile file;
    file.tempo = kMelodyTempo;
    file.instrument = kWoodblock;
    for (int i = 0; i < entries; ++i) {
        const double duration = kDurations[static_cast<std::size_t>(i) % kDurations.size()];
        file.texts.notes += QStringLiteral("72;");
        file.texts.durations += QString::number(duration) + u';';
        file.texts.attributes += QStringLiteral("n;");
    }
    Composition composition;
    MelodyEditor(composition).open(file);
    machine.funzioniMM.chooseInstrument(kWoodblock);
    machine.run(kStartTune);
    NoView view;
    MelodyPlayer player(machine.runtime, machine.funzioniMM, composition, view);
    player.play(0, static_cast<std::int16_t>(entries - 1));
    double due = 0;
    for (int i = 0; i < entries; ++i) {
        printDue(due);
        due += static_cast<double>(totalMs(composition.melody.entry(i).quarters(), kMelodyTempo)) *
               1e-3;
    }
}

/// The range's lower end is the reference and, with these random numbers, the note as well, so that
/// both have the same wave form.
void playEarTraining(Machine& machine, int tests) {
    EarTrainingState state;
    frmInto window({machine.runtime, machine.out, machine.dialogs, machine.folders, machine.help,
                    machine.funzioniMM},
                   state, nullptr);
    const auto work = [&] {
        machine.funzioniMM.chooseInstrument(kWoodblock);
        machine.run(kStartTune);
        for (const char* name : {"lb_24", "lb_36", "lblMod", "lb_24"})
            click(window, QLatin1String(name));
        machine.run(500ms);
        machine.out.printPlanned();
        click(window, QStringLiteral("IntoStart"));
        for (int i = 1; i < tests; ++i) {
            machine.run(200ms);
            click(window, QStringLiteral("lb_24"));
        }
        click(window, QStringLiteral("IntoStart"));
        window.close();
    };
    QTimer::singleShot(300, &window, work);
    window.exec();
}

void holdNote(Machine& machine, int seconds) {
    machine.funzioniMM.chooseInstrument(instruments::kOrgano);
    machine.funzioniMM.NoteOn(FunzioniMM::kMelodyChannel, 69, 100);
    machine.run(std::chrono::seconds(seconds));
    machine.funzioniMM.NoteOff(FunzioniMM::kMelodyChannel, 69);
}

void playFirst(Machine& machine, int clicks) {
    constexpr auto kInterval = 200ms;
    Instant next = machine.runtime.now();
    for (int i = 0; i < clicks; ++i, next += kInterval) {
        machine.runtime.blockUntil(next);
        machine.funzioniMM.NoteOn(FunzioniMM::kPercussionChannel, 76, 127);
        printDue(0.2 * i);
    }
}

}  // namespace

int beat::play(int argc, char* argv[]) {
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    application::prepare(app);
    const QByteArray what(argv[2]);
    const int count = std::atoi(argv[3]);
    Machine machine;
    if (!machine.open(what == "port"))
        return EXIT_FAILURE;
    if (what == "melody")
        playMelody(machine, count);
    else if (what == "held")
        holdNote(machine, count);
    else if (what == "first")
        playFirst(machine, count);
    else if (what == "ear")
        playEarTraining(machine, count);
    else
        playMetronome(machine, count);
    machine.run(300ms);
    std::fflush(stdout);
    // What the end of the program costs is no part of this.
    std::_Exit(EXIT_SUCCESS);
}
