#include "composer/melody/composition.h"
#include "composer/playback/melody_player.h"
#include "support/test_world.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

using namespace std::chrono_literals;

namespace {

using Lines = std::vector<std::string>;

class KeyRecorder : public PlayerView {
public:
    explicit KeyRecorder(MidiRecorder& midi) : midi_(midi) {}
    void showPlaying(bool) override {}
    void enableCanc(bool) override {}
    void showEntryNumber(const QString&) override {}
    void showEntryName(const QString&) override {}
    void markKey(pitch::NoteIndex key, bool on) override {
        midi_.note((on ? "mark " : "unmark ") + std::to_string(key));
    }
    void focusPlay() override {}

private:
    MidiRecorder& midi_;
};

struct Playing : TestWorld {
    Composition composition;
    KeyRecorder keys{midi};
    MelodyPlayer player{runtime, funzioniMM, composition, keys};

    Playing() {
        openOutput();
        Melody::Reading reading =
            Melody::read({"60;62;64;00;65;60;67;", "1;0,5;0,25;0,5;1;25;1;", "n;s;t;p;a;n;n;"});
        MelodyDelta delta{0, 0, std::move(reading.entries), true, std::move(reading.damaged)};
        composition.melody.exchange(delta);
        composition.tempo = 60;
    }

    Lines run() {
        player.play(0, 6);
        runtime.forgetActs();
        Lines lines = midi.take();
        lines.insert(lines.end(), dialogs.lines.begin(), dialogs.lines.end());
        return lines;
    }
};

/// Something that happens, in a pass or, as a screen reader's press or a signal does, in a wait.
const std::vector<std::function<void(Playing&)>> kHappenings{
    [](Playing& playing) { playing.composition.tempo = 150; },
    [](Playing& playing) { playing.midi.deviceGone = true; },
    [](Playing& playing) { playing.midi.deviceGone = false; },
    [](Playing& playing) { playing.midi.replug(); },
    [](Playing& playing) { playing.player.abandon(); },
    [](Playing& playing) {
        if (playing.player.playing())
            playing.player.play(0, 6);
    },
    [](Playing& playing) { playing.runtime.end(); },
};

Lines runWithHappenings(unsigned seed, bool planned) {
    Playing playing;
    playing.midi.takesPlans = planned;
    std::mt19937 random(seed);
    std::vector<std::unique_ptr<Alarm>> alarms;
    for (int i = 0; i < 3; ++i) {
        const auto& happening = kHappenings[random() % kHappenings.size()];
        const Instant when = std::chrono::milliseconds(random() % 32000);
        if (random() % 2 == 0) {
            playing.runtime.at(when, [&] { happening(playing); });
            continue;
        }
        alarms.push_back(playing.runtime.makeAlarm([&] { happening(playing); }));
        alarms.back()->set(when);
    }
    return playing.run();
}

}  // namespace

TEST(PlannedNotes, SendWhatIsSentWithoutPlanningWhateverHappens) {
    for (unsigned seed = 0; seed < 2000; ++seed)
        ASSERT_EQ(runWithHappenings(seed, true), runWithHappenings(seed, false)) << seed;
}

TEST(PlannedNotes, KeepTheirInstantsWhenTheThreadWakesLate) {
    const auto notes = [](Playing& playing) {
        Lines lines = playing.run();
        std::erase_if(lines, [](const auto& line) { return line.find(" on ") == line.npos; });
        return lines;
    };
    Playing punctual;
    const Lines expected = notes(punctual);
    for (const Instant latest : {5ms, 25ms, 50ms}) {
        Playing late;
        std::mt19937 random(1);
        late.runtime.wakeLate([&] { return latest * (random() % 100) / 100; });
        EXPECT_EQ(notes(late), expected) << latest / 1ms;
    }
}
