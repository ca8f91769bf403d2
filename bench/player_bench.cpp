// How exactly the player keeps its time: the instants of the note-ons against the exact sum of the
// entries' whole milliseconds.
//
//   player_bench [entries, 200]

#include "composer/melody/composition.h"
#include "composer/melody/melody_editor.h"
#include "composer/playback/articulation.h"
#include "composer/playback/melody_player.h"
#include "figures.h"
#include "no_view.h"
#include "silent_machine.h"

#include <QApplication>

#include <array>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int kTempo = 120;
constexpr std::array<double, 4> kDurations{0.25, 0.5, 0.375, 1};
constexpr std::array<const char*, 4> kLetters{"n", "s", "t", "a"};

MelodyFile melodyOf(int entries) {
    MelodyFile file;
    file.tempo = kTempo;
    for (int i = 0; i < entries; ++i) {
        const auto place = static_cast<std::size_t>(i) % kDurations.size();
        file.texts.notes += QString::number(48 + i % 24) + QLatin1Char(';');
        file.texts.durations += QString::number(kDurations[place]) + QLatin1Char(';');
        file.texts.attributes += QLatin1String(kLetters[place]) + QLatin1Char(';');
    }
    return file;
}

}  // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QtRuntime::chooseEventQueue();
    QApplication app(argc, argv);
    const int entries = argc > 1 ? std::atoi(argv[1]) : 200;

    SilentMachine machine;
    machine.funzioniMM.MidiOpen(kMidiMapper);
    NoView view;
    Composition composition;
    MelodyEditor editor(composition);
    editor.open(melodyOf(entries));
    MelodyPlayer player(machine.runtime, machine.funzioniMM, composition, view);
    player.play(0, static_cast<std::int16_t>(entries - 1));

    std::vector<double> errors;
    double accumulated = 0;
    const ArrivalRecorder::Arrival* last = nullptr;
    int entry = 0;
    for (const ArrivalRecorder::Arrival& arrival : machine.midi.arrivals) {
        if (arrival.message >> 16 == 0)
            continue;
        if (last) {
            const double due = static_cast<double>(totalMs(
                                   composition.melody.entry(entry - 1).quarters(), kTempo)) /
                               1000;
            const double error = figures::seconds(arrival.when - last->when) - due;
            accumulated += error;
            errors.push_back(std::abs(error));
        }
        last = &arrival;
        ++entry;
    }
    figures::print("interval of two note-ons against its rule", errors, 1e-3, "ms off");
    std::printf("accumulated over %d entries: %+.3f ms\n", entry, accumulated * 1e3);
    return EXIT_SUCCESS;
}
