#include "metronome/metronome.h"

#include "support/test_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::SizeIs;

namespace {

using Lines = std::vector<std::string>;

/// Writes down what the metronome shows, between the messages that it sends.
class Trace : public MetronomeView {
public:
    explicit Trace(MidiRecorder& midi) : midi_(midi) {}

    void metronomeStarted() override { midi_.note("started"); }
    void metronomeStopped() override { midi_.note("stopped"); }
    void showTimeSignature(const QString& timeSig) override { midi_.note(timeSig.toStdString()); }
    void showLamps(int count) override { midi_.note("lamps " + std::to_string(count)); }
    void darkenLamps() override { midi_.note("dark"); }
    void lightLamp(int lamp, pulse_pattern::Colour colour) override {
        const std::map<pulse_pattern::Colour, const char*> names{
            {0x0000FF, " r"}, {0x00FF00, " g"}, {0xFF0000, " b"}};
        midi_.note("lamp " + std::to_string(lamp) + names.at(colour));
    }

private:
    MidiRecorder& midi_;
};

Lines linesWith(Lines lines, const std::string& what) {
    std::erase_if(lines, [&](const std::string& line) { return line.find(what) == line.npos; });
    return lines;
}

struct MetronomeTest : testing::Test {
    TestWorld world;
    MetronomeState state;
    Trace trace{world.midi};
    Metronome metronome{world.runtime, world.funzioniMM, state, trace};

    MetronomeTest() {
        world.openOutput();
        metronome.load();
        world.midi.take();
    }

    /// Runs the metronome until the first pass after some time.
    Lines runFor(Instant time) {
        world.runtime.at(world.runtime.now() + time, [this] { metronome.startOrStop(); });
        metronome.startOrStop();
        return world.midi.take();
    }
};

}  // namespace

TEST_F(MetronomeTest, TheLampsAreDarkBeforeEachClickAndStopSilencesOnce) {
    EXPECT_THAT(runFor(1500ms),
                ElementsAre("0.000 started", "0.000 2/4", "0.000 lamps 2",  //
                            "0.900 reset", "0.900 dark", "1.000 lamp 0 r", "1.000 on 10 76 127",
                            "1.900 reset", "1.900 dark", "2.000 lamp 1 g", "2.000 on 10 85 127",
                            "2.000 stopped", "2.000 on 10 76 0", "2.000 on 10 85 0",
                            "2.000 on 10 33 0", "2.000 dark"));
    EXPECT_FALSE(state.MetroRunning);
}

TEST_F(MetronomeTest, EachTimeSignatureBeatsItsPatternOverAndOver) {
    const std::pair<std::string, std::string> signatures[] = {
        {"3/4", "rgg"}, {"4/4", "rggg"}, {"6/8", "rggbgg"}, {"2/4", "rg"}, {"3/4", "rgg"}};
    for (const auto& [timeSig, colours] : signatures) {
        SCOPED_TRACE(timeSig);
        metronome.stepTimeSignature();
        EXPECT_THAT(
            world.midi.take(),
            ElementsAre(EndsWith(timeSig), EndsWith("lamps " + std::to_string(colours.size()))));
        const std::size_t pulses = colours.size() + 1;
        const Lines lit = linesWith(runFor(pulses * 1s - 500ms), " lamp ");
        ASSERT_THAT(lit, SizeIs(pulses));
        for (std::size_t i = 0; i < pulses; ++i) {
            const std::size_t lamp = i % colours.size();
            EXPECT_THAT(lit[i], EndsWith("lamp " + std::to_string(lamp) + ' ' + colours[lamp]));
        }
    }
}

TEST_F(MetronomeTest, TempoDoublingAndVolumeAreTakenAtTheNextPulse) {
    world.runtime.at(500ms, [this] { metronome.setTempo(120); });
    world.runtime.at(1200ms, [this] { metronome.toggleDoubling(); });
    world.runtime.at(1600ms, [this] { metronome.setVolume(40); });
    EXPECT_THAT(linesWith(runFor(1900ms), " on "),
                ElementsAre("1.000 on 10 76 127", "1.500 on 10 85 127", "1.750 on 10 76 127",
                            "2.000 on 10 85 40", "2.000 on 10 76 0", "2.000 on 10 85 0",
                            "2.000 on 10 33 0"));
    EXPECT_EQ(metronome.shownTempo(), 240);
    metronome.toggleDoubling();
    EXPECT_EQ(metronome.shownTempo(), 120);
    EXPECT_DOUBLE_EQ(state.MetroPeriod, 0.5);
    metronome.setTempo(200);
    metronome.toggleDoubling();
    EXPECT_THAT(linesWith(runFor(100ms), "reset"), ElementsAre("2.050 reset"));
}

TEST_F(MetronomeTest, AStopIsSeenBeforeTheNextPulse) {
    const std::pair<Instant, std::size_t> stopsAndClicks[] = {
        {0ms, 0}, {1ms, 1}, {1500ms, 2}, {2999ms, 3}};
    for (const auto& [stop, clicks] : stopsAndClicks) {
        SCOPED_TRACE(stop / 1ms);
        const Lines lines = runFor(stop);
        EXPECT_THAT(linesWith(lines, " 127"), SizeIs(clicks));
        EXPECT_THAT(linesWith(lines, " on "), SizeIs(clicks + 3)) << "three closing notes";
    }
}

TEST_F(MetronomeTest, AStopAndAStartInOnePassBeginThePatternAnew) {
    world.runtime.at(500ms, [this] {
        metronome.startOrStop();
        metronome.startOrStop();
    });
    EXPECT_THAT(linesWith(runFor(1500ms), " on "),
                ElementsAre("1.000 on 10 76 127", "1.000 on 10 76 0", "1.000 on 10 85 0",
                            "1.000 on 10 33 0",  //
                            "2.000 on 10 76 127", "2.000 on 10 76 0", "2.000 on 10 85 0",
                            "2.000 on 10 33 0"));
}

TEST_F(MetronomeTest, AnUnknownLetterRepeatsThePulseBeforeIt) {
    state.MetroPattern = "cAb?";
    state.MetroNoteB = 35;
    const Lines lines = runFor(3900ms);
    EXPECT_THAT(linesWith(lines, " lamp "), ElementsAre("1.000 lamp 0 b", "2.000 lamp 1 b",
                                                        "3.000 lamp 2 g", "4.000 lamp 3 g"));
    EXPECT_THAT(linesWith(lines, " 127"), ElementsAre("1.000 on 10 33 127", "2.000 on 10 33 127",
                                                      "3.000 on 10 35 127", "4.000 on 10 35 127"));
}

TEST_F(MetronomeTest, WithoutAnOutputItSleepsUntilItIsStoppedOrTheProgramEnds) {
    world.funzioniMM.MidiClose();
    world.midi.take();
    EXPECT_THAT(runFor(60s), ElementsAre("0.000 started", "0.000 2/4", "0.000 lamps 2",
                                         "60.000 stopped", "60.000 dark"));
    EXPECT_LE(world.runtime.passes(), 2);
    world.runtime.at(70s, [this] { world.runtime.end(); });
    metronome.startOrStop();
    EXPECT_FALSE(state.MetroRunning);
    EXPECT_THAT(linesWith(world.midi.take(), "stopped"), ElementsAre("70.000 stopped"));
}

TEST_F(MetronomeTest, ALostOutputIsReportedOnceAndReopened) {
    world.runtime.at(1500ms, [this] { world.midi.deviceGone = true; });
    world.runtime.at(60s, [this] { world.midi.deviceGone = false; });
    EXPECT_THAT(linesWith(runFor(62s), " 127"),
                ElementsAre("1.000 on 10 76 127", "2.000 on 10 85 127", "61.500 on 10 85 127",
                            "62.500 on 10 76 127"));
    EXPECT_EQ(world.dialogs.lines.size(), 1U);
    EXPECT_LE(world.runtime.passes(), 130);
}

TEST_F(MetronomeTest, AStartWithinAnotherActivityOfThePassBeats) {
    world.runtime.at(500ms, [this] {
        // An activity with a loop of its own, which the pulse loop around it waits for.
        while (world.runtime.now() < 10s)
            world.runtime.pump(10s);
    });
    for (const Instant click : {3000ms, 4000ms, 6500ms})
        world.runtime.at(click, [this] { metronome.startOrStop(); });
    metronome.startOrStop();
    const Lines lines = world.midi.take();
    EXPECT_THAT(linesWith(lines, " 127"), ElementsAre("1.000 on 10 76 127", "5.000 on 10 76 127",
                                                      "6.000 on 10 85 127", "7.000 on 10 76 127"));
    EXPECT_THAT(linesWith(lines, " on 10 33 0"),
                ElementsAre("4.000 on 10 33 0", "7.000 on 10 33 0"))
        << "the closing notes, once for each stop";
}

TEST_F(MetronomeTest, TheStepGoesOnFromWhatIsShown) {
    const auto compose = [this] {
        state.MetroPattern = "abcbb";
        state.MetroTimeSig = "P.";
    };
    compose();
    metronome.stepTimeSignature();
    EXPECT_EQ(state.MetroTimeSig, "3/4") << "\"P.\" waits for the next start";
    compose();
    world.runtime.at(500ms, [this] { metronome.stepTimeSignature(); });
    runFor(1500ms);
    EXPECT_EQ(state.MetroTimeSig, "P.") << "no step while it beats";
    metronome.stepTimeSignature();
    EXPECT_EQ(state.MetroTimeSig, "2/4");
    EXPECT_EQ(state.MetroPattern, "ab");
}
