#include "metronome/metronome.h"
#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

using namespace std::chrono_literals;

namespace {

using Lines = std::vector<std::string>;

class LampRecorder : public MetronomeView {
public:
    explicit LampRecorder(MidiRecorder& midi) : midi_(midi) {}
    void metronomeStarted() override {}
    void metronomeStopped() override {}
    void showTimeSignature(const QString&) override {}
    void showLamps(int) override {}
    void darkenLamps() override { midi_.note("dark"); }
    void lightLamp(int lamp, pulse_pattern::Colour) override {
        midi_.note("lamp " + std::to_string(lamp));
    }

private:
    MidiRecorder& midi_;
};

struct Beat : TestWorld {
    MetronomeState state;
    LampRecorder lamps{midi};
    Metronome metronome{runtime, funzioniMM, state, lamps};

    Beat() {
        runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(23, 10)));
        openOutput();
        metronome.load();
        midi.take();
    }

    /// Everything that reached the output and was shown, and the boxes, of a run of 8 s.
    Lines run() {
        runtime.at(8s, [this] {
            if (state.MetroRunning)
                metronome.startOrStop();
        });
        metronome.startOrStop();
        runtime.forgetActs();
        Lines lines = midi.take();
        lines.insert(lines.end(), dialogs.lines.begin(), dialogs.lines.end());
        return lines;
    }
};

Lines pulses(Lines lines) {
    std::erase_if(lines, [](const std::string& line) {
        return line.find(" 127") == line.npos && line.find("reset") == line.npos;
    });
    return lines;
}

/// Something that happens, in a pass or, as a screen reader's press or a signal does, in a wait.
using Happening = std::function<void(Beat&)>;

const std::vector<Happening> kHappenings{
    [](Beat& beat) { beat.metronome.setTempo(200); },
    [](Beat& beat) { beat.metronome.toggleDoubling(); },
    [](Beat& beat) { beat.metronome.setVolume(30); },
    [](Beat& beat) { beat.midi.deviceGone = true; },
    [](Beat& beat) { beat.midi.deviceGone = false; },
    [](Beat& beat) { beat.midi.replug(); },
    [](Beat& beat) {
        if (beat.state.MetroRunning)
            beat.metronome.startOrStop();
    },
    [](Beat& beat) { beat.runtime.end(); },
};

Lines runWithHappenings(unsigned seed, bool planned) {
    Beat beat;
    beat.midi.takesPlans = planned;
    std::mt19937 random(seed);
    std::vector<std::unique_ptr<Alarm>> alarms;
    for (int i = 0; i < 4; ++i) {
        const Happening& happening = kHappenings[random() % kHappenings.size()];
        const Instant when = std::chrono::milliseconds(random() % 6000);
        if (random() % 2 == 0) {
            beat.runtime.at(when, [&] { happening(beat); });
            continue;
        }
        alarms.push_back(beat.runtime.makeAlarm([&] { happening(beat); }));
        alarms.back()->set(when);
    }
    const Lines lines = beat.run();
    return lines;
}

}  // namespace

TEST(PlannedPulses, SendWhatIsSentWithoutPlanningWhateverHappens) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        const Lines planned = runWithHappenings(seed, true);
        const Lines plain = runWithHappenings(seed, false);
        const auto [other, expected] =
            std::mismatch(planned.begin(), planned.end(), plain.begin(), plain.end());
        ASSERT_EQ(planned, plain) << seed << ": " << (other == planned.end() ? "end" : *other)
                                  << " for " << (expected == plain.end() ? "end" : *expected);
    }
}

TEST(PlannedPulses, KeepTheirInstantsWhenTheThreadWakesLate) {
    for (const int tempo : {60, 120, 200}) {
        for (const Instant latest : {5ms, 60ms}) {
            Beat punctual;
            punctual.metronome.setTempo(tempo);
            const Lines expected = pulses(punctual.run());
            Beat late;
            late.metronome.setTempo(tempo);
            std::mt19937 random(1);
            late.runtime.wakeLate([&] {
                return Instant(
                    std::uniform_int_distribution<Instant::rep>(0, latest / 1ns)(random));
            });
            EXPECT_EQ(pulses(late.run()), expected) << tempo << ' ' << latest / 1ms;
        }
    }
}

TEST(PlannedPulses, StartAnewAfterAStandstill) {
    Beat beat;
    bool stood = false;
    beat.runtime.wakeLate([&] {
        const bool stands = !stood && beat.runtime.now() > 2s;
        stood = stood || stands;
        return stands ? Instant(1700ms) : Instant(0);
    });
    Lines clicks = pulses(beat.run());
    std::erase_if(clicks, [](const std::string& line) { return line.find(" 127") == line.npos; });
    std::vector<double> instants;
    for (const std::string& line : clicks)
        instants.push_back(std::stod(line));
    ASSERT_GT(instants.size(), 5U);
    for (std::size_t i = 1; i < instants.size(); ++i)
        EXPECT_GT(instants[i] - instants[i - 1], 0.98) << "no pulse is hurried";
}

TEST(PlannedPulses, LightTheirLampsWhenTheyAreHeard) {
    for (const auto& [delay, lit] : {std::pair{40ms, "1.028 lamp 0"}, {900ms, "1.438 lamp 0"}}) {
        Beat beat;
        beat.midi.heardLater = delay;
        const Lines lines = beat.run();
        EXPECT_THAT(lines, testing::Contains(lit));
        const Lines first(lines.begin(), lines.begin() + 4);
        EXPECT_EQ(first[0].substr(5), " reset");
        EXPECT_EQ(first[2].substr(5), " on 10 76 127") << "its click keeps its instant";
    }
}

TEST(PlannedPulses, StopWhenTheRuleStopsHoweverLateTheyAreHeard) {
    for (int ms = 800; ms < 2400; ms += 20) {
        const auto runWith = [ms](Instant heardLater) {
            Beat beat;
            beat.midi.heardLater = heardLater;
            beat.runtime.at(std::chrono::milliseconds(ms), [&] { beat.metronome.startOrStop(); });
            Lines lines = beat.run();
            std::erase_if(lines, [](const auto& line) { return line.find("lamp") != line.npos; });
            return lines;
        };
        EXPECT_EQ(runWith(120ms), runWith(0ms)) << ms;
    }
}
