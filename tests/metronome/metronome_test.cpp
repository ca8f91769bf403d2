#include "metronome/metronome.h"

#include "support/test_world.h"

#include <QDateTime>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Lines = std::vector<std::string>;

/// Writes down what the metronome shows and sends, in one list with times.
class Trace : public MetronomeView {
public:
    explicit Trace(TestWorld& world) : world_(world) {}

    Lines take() {
        addMessages();
        return std::exchange(lines_, {});
    }

    void metronomeStarted() override { add("started"); }
    void metronomeStopped() override { add("stopped"); }
    void showTimeSignature(const QString& timeSig) override { add(timeSig.toStdString()); }
    void showLamps(int count) override { add("lamps " + std::to_string(count)); }
    void darkenLamps() override { add("dark"); }
    void lightLamp(int lamp, pulse_pattern::Colour colour) override {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "lamp %d %06x", lamp, colour);
        add(text.data());
    }

private:
    void addMessages() {
        for (std::string& line : world_.midi.take())
            lines_.push_back(std::move(line));
    }
    void add(const std::string& what) {
        addMessages();
        std::array<char, 32> time{};
        const double seconds = std::chrono::duration<double>(world_.runtime.now()).count();
        std::snprintf(time.data(), time.size(), "%.3f ", seconds);
        lines_.push_back(time.data() + what);
    }

    TestWorld& world_;
    Lines lines_;
};

Lines linesWith(const Lines& lines, const std::string& what) {
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.find(what) != std::string::npos; });
    return found;
}

struct MetronomeTest : testing::Test {
    TestWorld world;
    MetronomeState state;
    Metronome metronome{world.runtime, world.funzioniMM, state};
    Trace trace{world};

    MetronomeTest() {
        // Just after midnight the clock's single-precision grain is too fine to be seen.
        world.runtime.setWallClock(QDateTime(QDate(2004, 10, 1), QTime(0, 0)));
        world.openOutput();
        metronome.attach(trace);
        trace.take();
    }

    void clickAt(Instant instant) {
        world.runtime.at(instant, [this] { metronome.startOrStop(); });
    }

    /// Runs the metronome until the first pass at or after `stop`.
    Lines runUntil(Instant stop) {
        clickAt(stop);
        metronome.startOrStop();
        return trace.take();
    }
};

}  // namespace

TEST_F(MetronomeTest, TheLampsAreDarkBeforeEachClickAndStopSilencesOnce) {
    EXPECT_THAT(runUntil(1500ms),
                ElementsAre("0.000 started", "0.000 2/4", "0.000 lamps 2",  //
                            "0.900 reset", "0.900 dark", "1.000 lamp 0 0000ff",
                            "1.000 on 10 76 127",  //
                            "1.900 reset", "1.900 dark", "2.000 lamp 1 00ff00",
                            "2.000 on 10 85 127",  //
                            "2.000 stopped", "2.000 on 10 76 0", "2.000 on 10 85 0",
                            "2.000 on 10 33 0", "2.000 dark"));
    EXPECT_FALSE(state.MetroRunning);
}

TEST_F(MetronomeTest, EachTimeSignatureBeatsItsPatternOverAndOver) {
    struct Case {
        const char* timeSig;
        int lamps;
        Lines clicks;
    };
    const std::array<Case, 5> kCases{{
        {"3/4", 3, {"0 0000ff 76", "1 00ff00 85", "2 00ff00 85", "0 0000ff 76"}},
        {"4/4", 4, {"0 0000ff 76", "1 00ff00 85", "2 00ff00 85", "3 00ff00 85", "0 0000ff 76"}},
        {"6/8",
         6,
         {"0 0000ff 76", "1 00ff00 85", "2 00ff00 85", "3 ff0000 33", "4 00ff00 85", "5 00ff00 85",
          "0 0000ff 76"}},
        {"2/4", 2, {"0 0000ff 76", "1 00ff00 85", "0 0000ff 76"}},
        {"3/4", 3, {"0 0000ff 76"}},
    }};
    for (const Case& expected : kCases) {
        SCOPED_TRACE(expected.timeSig);
        metronome.stepTimeSignature();
        EXPECT_THAT(trace.take(),
                    ElementsAre(HasSubstr(expected.timeSig),
                                HasSubstr("lamps " + std::to_string(expected.lamps))));
        const auto pulses = static_cast<int>(expected.clicks.size());
        const Lines lines = runUntil(world.runtime.now() + pulses * 1s - 500ms);
        const Lines lit = linesWith(lines, " lamp ");
        const Lines sounded = linesWith(lines, " 127");
        ASSERT_EQ(lit.size(), expected.clicks.size());
        ASSERT_EQ(sounded.size(), expected.clicks.size());
        for (std::size_t i = 0; i < lit.size(); ++i) {
            const std::string lamp = lit[i].substr(lit[i].find("lamp ") + 5);
            const std::string note = sounded[i].substr(sounded[i].find(" 10 ") + 4, 2);
            EXPECT_EQ(lamp + " " + note, expected.clicks[i]);
        }
    }
}

TEST_F(MetronomeTest, TempoDoublingAndVolumeAreTakenAtTheNextPulse) {
    world.runtime.at(500ms, [this] { metronome.setTempo(120); });
    world.runtime.at(1200ms, [this] { metronome.toggleDoubling(); });
    world.runtime.at(1600ms, [this] { metronome.setVolume(40); });
    const Lines lines = runUntil(1900ms);
    EXPECT_THAT(linesWith(lines, " on "),
                ElementsAre("1.000 on 10 76 127", "1.500 on 10 85 127", "1.750 on 10 76 127",
                            "2.000 on 10 85 40", "2.000 on 10 76 0", "2.000 on 10 85 0",
                            "2.000 on 10 33 0"));
    EXPECT_EQ(metronome.shownTempo(), 240);
    metronome.toggleDoubling();
    EXPECT_EQ(metronome.shownTempo(), 120);
    EXPECT_DOUBLE_EQ(state.MetroPeriod, 0.5);
    metronome.setTempo(200);
    metronome.toggleDoubling();
    const Instant begin = world.runtime.now();
    EXPECT_THAT(linesWith(runUntil(begin + 100ms), "reset"), ElementsAre("2.050 reset"));
}

TEST_F(MetronomeTest, AStopIsSeenBeforeTheNextPulse) {
    metronome.stepTimeSignature();
    const std::array<std::pair<Instant, std::size_t>, 5> kStopsAndClicks{
        {{0ms, 0}, {1ms, 1}, {1500ms, 2}, {2999ms, 3}, {3500ms, 4}}};
    for (const auto& [stop, clicks] : kStopsAndClicks) {
        SCOPED_TRACE(stop / 1ms);
        const Lines lines = runUntil(world.runtime.now() + stop);
        EXPECT_EQ(linesWith(lines, " 127").size(), clicks);
        EXPECT_EQ(linesWith(lines, " on ").size(), clicks + 3) << "three closing notes";
        EXPECT_NE(lines.back().find("dark"), std::string::npos);
    }
}

TEST_F(MetronomeTest, AStopAndAStartInOnePassBeginThePatternAnew) {
    world.runtime.at(500ms, [this] {
        metronome.startOrStop();
        metronome.startOrStop();
    });
    EXPECT_THAT(linesWith(runUntil(1500ms), " on "),
                ElementsAre("1.000 on 10 76 127", "1.000 on 10 76 0", "1.000 on 10 85 0",
                            "1.000 on 10 33 0",  //
                            "2.000 on 10 76 127", "2.000 on 10 76 0", "2.000 on 10 85 0",
                            "2.000 on 10 33 0"));
}

TEST_F(MetronomeTest, AnUnknownLetterRepeatsThePulseBeforeIt) {
    state.MetroPattern = QStringLiteral("cAb?");
    state.MetroTimeSig = QStringLiteral("P.");
    state.MetroNoteB = 35;
    const Lines lines = runUntil(3900ms);
    EXPECT_EQ(lines[1], "0.000 P.");
    EXPECT_THAT(linesWith(lines, " lamp "),
                ElementsAre("1.000 lamp 0 ff0000", "2.000 lamp 1 ff0000", "3.000 lamp 2 00ff00",
                            "4.000 lamp 3 00ff00"));
    EXPECT_THAT(linesWith(lines, " 127"), ElementsAre("1.000 on 10 33 127", "2.000 on 10 33 127",
                                                      "3.000 on 10 35 127", "4.000 on 10 35 127"));
}

TEST_F(MetronomeTest, WithoutAnOutputItSleepsUntilItIsStopped) {
    world.funzioniMM.MidiClose();
    trace.take();
    const int passes = world.runtime.passes();
    EXPECT_THAT(runUntil(60s), ElementsAre("0.000 started", "0.000 2/4", "0.000 lamps 2",
                                           "60.000 stopped", "60.000 dark"));
    EXPECT_LE(world.runtime.passes() - passes, 2);
}

TEST_F(MetronomeTest, TheEndOfTheProgramStopsIt) {
    world.runtime.at(1500ms, [this] { world.runtime.end(); });
    metronome.startOrStop();
    EXPECT_FALSE(state.MetroRunning);
    EXPECT_EQ(linesWith(trace.take(), "stopped"), Lines{"2.000 stopped"});
}

TEST_F(MetronomeTest, TheStepGoesOnFromWhatIsShown) {
    state.MetroPattern = QStringLiteral("abcbb");
    state.MetroTimeSig = QStringLiteral("P.");
    metronome.stepTimeSignature();
    EXPECT_EQ(state.MetroTimeSig, QStringLiteral("3/4")) << "\"P.\" waits for the next start";

    state.MetroPattern = QStringLiteral("abcbb");
    state.MetroTimeSig = QStringLiteral("P.");
    world.runtime.at(500ms, [this] { metronome.stepTimeSignature(); });
    runUntil(1500ms);
    EXPECT_EQ(state.MetroTimeSig, QStringLiteral("P.")) << "no step while it beats";
    metronome.stepTimeSignature();
    EXPECT_EQ(state.MetroTimeSig, QStringLiteral("2/4"));
    EXPECT_EQ(state.MetroPattern, QStringLiteral("ab"));
}
