#include "eartraining/ear_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

namespace {

struct EarTest : testing::Test, EarWorld {
    Lines messages() { return midi.takeUntimed(); }
};

}  // namespace

TEST_F(EarTest, PitchAnswersAreJudgedAndARightOneSoundsTheNextNote) {
    clickKeys({20, 24, 22});
    midi.take();
    willDraw(5, {1, 1, 4});
    pitch.startOrStop();
    EXPECT_EQ(messages(), Lines({"on 1 58 0", "on 1 57 100"}));
    EXPECT_EQ(screen.prompt, PitchExercise::kRecognise);
    EXPECT_FALSE(screen.exerciseMenu);
    EXPECT_FALSE(ear.unload());
    clickKeys({20, 59});
    EXPECT_THAT(messages(), IsEmpty()) << "a wrong click sounds nothing";
    EXPECT_EQ(screen.score, "0 2 0.00%");
    clickKeys({21, 21});
    EXPECT_EQ(messages(), Lines({"on 1 57 0", "on 1 57 100", "on 1 57 0", "on 1 60 100"}))
        << "a note may come again";
    clickKeys({24});
    EXPECT_EQ(screen.score, "3 2 60.00%");
    EXPECT_THAT(screen.verdicts, ElementsAre(false, false, true, true, true));
    EXPECT_THAT(screen.keys, IsEmpty());
    messages();

    pitch.startOrStop();
    EXPECT_EQ(messages(), Lines({"on 1 60 0"}));
    EXPECT_EQ(screen.prompt, range_prompts::kReset);
    clickKeys({24, 30});
    EXPECT_EQ(screen.score, "3 2 60.00%") << "the keyboard ignores clicks";
    pitch.startOrStop();
    EXPECT_EQ(screen.score, "0 0 0") << "the same range again";
    pitch.startOrStop();
    messages();
    EXPECT_TRUE(ear.unload());
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(EarTest, WithTheReferenceEachTestEndsByItself) {
    clickKeys({20, 24, 22});
    pitch.toggleMode();
    midi.take();
    willDraw(5, {3});
    pitch.startOrStop();
    EXPECT_THAT(midi.take(),
                ElementsAre("0.000 on 1 58 90", "1.200 on 1 58 0",  //
                            "1.300 on 1 58 0", "1.300 on 1 59 100", "2.200 on 1 59 0"));
    // A stop that is clicked while the answer's handler lets events run cancels its test.
    runtime.at(runtime.now(), [this] { pitch.startOrStop(); });
    clickKeys({23});
    EXPECT_EQ(messages(), Lines({"on 1 59 0"}));
    EXPECT_TRUE(ear.unload());
}

TEST_F(EarTest, TheIdleIntervalChartPlaysEachModeAndShowsItsKeys) {
    ear.choose(interval);
    messages();
    interval.semitonesClicked(7);
    EXPECT_EQ(screen.keys, std::set<int>({24, 31}));
    EXPECT_EQ(messages(), Lines({"on 1 0 0", "on 1 0 0", "on 1 60 90", "on 1 67 90"}));
    interval.stepMode();
    interval.semitonesClicked(4);
    EXPECT_EQ(screen.keys, std::set<int>({24, 28}));
    EXPECT_THAT(midi.take(), ElementsAre("0.000 on 1 60 0", "0.000 on 1 67 0",  //
                                         "0.000 on 1 60 90", "0.700 on 1 60 0", "0.800 on 1 64 90",
                                         "1.500 on 1 64 0"));
    EXPECT_EQ(std::chrono::round<std::chrono::milliseconds>(runtime.now()), 1800ms);
    interval.stepMode();
    for (const int none : {-1, 14})
        interval.semitonesClicked(none);
    EXPECT_THAT(messages(), IsEmpty());
    interval.semitonesClicked(0);
    EXPECT_EQ(messages(), Lines({"on 1 60 0", "on 1 64 0", "on 1 60 90", "on 1 60 0", "on 1 60 90",
                                 "on 1 60 0", "on 1 60 90", "on 1 60 90"}));
    interval.stepMode();
    EXPECT_EQ(interval.mode(), IntervalExercise::Mode::Harmonic);
    EXPECT_TRUE(ear.unload());
    EXPECT_EQ(messages(), Lines({"on 1 60 0", "on 1 60 0"}));
}

TEST_F(EarTest, IntervalAnswersAreJudgedWithoutShowingKeys) {
    ear.choose(interval);
    interval.semitonesClicked(9);
    messages();
    willDraw(14, {12, 12, 3});
    interval.startOrStop();
    EXPECT_THAT(screen.keys, IsEmpty());
    EXPECT_EQ(screen.prompt, IntervalExercise::kRecognise);
    EXPECT_EQ(messages(), Lines({"on 1 60 0", "on 1 69 0", "on 1 60 90", "on 1 72 90"}));
    interval.semitonesClicked(3);
    clickKeys({20});
    EXPECT_THAT(messages(), IsEmpty());
    interval.semitonesClicked(12);
    EXPECT_EQ(messages(), Lines({"on 1 60 0", "on 1 72 0", "on 1 60 90", "on 1 72 90"}));
    interval.semitonesClicked(12);
    EXPECT_EQ(screen.score, "2 1 66.67%");
    EXPECT_THAT(screen.keys, IsEmpty());
    messages();
    EXPECT_FALSE(ear.unload());
    interval.startOrStop();
    EXPECT_EQ(messages(), Lines({"on 1 60 0", "on 1 63 0"}));
    EXPECT_TRUE(screen.exerciseMenu);
}

TEST_F(EarTest, ExcludedIntervalsAreNotDrawn) {
    const auto available = [this] {
        int count = 0;
        for (int i = 0; i < interval_chart::kIntervals; ++i)
            count += interval.available(i) ? 1 : 0;
        return count;
    };
    interval.toggleAvailable(0);
    EXPECT_EQ(available(), 14) << "the first cannot be excluded";
    interval.toggleAvailable(2);
    interval.toggleAll();
    EXPECT_EQ(available(), 1) << "the interval of 1 semitone decides";
    willDraw(14, {5, 13, 1, 0});
    interval.startOrStop();
    EXPECT_EQ(random.drawn, 4);
    interval.toggleAvailable(5);
    EXPECT_EQ(available(), 2) << "also while it runs";
    interval.toggleAll();
    EXPECT_EQ(available(), 14);
}

TEST_F(EarTest, AnIntervalRequestedBeforeTheFirstNoteReplacesTheOneThatBegins) {
    ear.choose(interval);
    interval.stepMode();
    messages();
    runtime.at(0ns, [this] { interval.semitonesClicked(7); });
    interval.semitonesClicked(2);
    EXPECT_EQ(messages(), Lines({"on 1 0 0", "on 1 0 0", "on 1 60 0", "on 1 62 0", "on 1 60 90",
                                 "on 1 60 0", "on 1 67 90", "on 1 67 0"}));
    EXPECT_EQ(screen.keys, std::set<int>({24, 31}));
}

TEST_F(EarTest, ChordsFollowTheirTypesAndASilence) {
    ear.choose(chord);
    clickKeys({51, 51});
    messages();
    willDraw(4, {3, 0, 1, 2});
    chord.startOrStop();
    EXPECT_EQ(messages(), Lines({"on 1 87 90", "on 1 91 90", "on 1 95 90"}));
    EXPECT_EQ(screen.keys, std::set<int>({51, 55, 59}));
    EXPECT_FALSE(chord.resetVisible());
    chord.toggleKeys();
    chord.typeClicked(0);
    EXPECT_THAT(messages(), IsEmpty()) << "a wrong answer leaves the chord sounding";
    for (const int right : {3, 0, 1})
        chord.typeClicked(right);
    EXPECT_THAT(midi.take(),
                ElementsAre("0.000 on 1 87 0", "0.000 on 1 91 0", "0.000 on 1 95 0",     //
                            "0.300 on 1 87 90", "0.300 on 1 90 90", "0.300 on 1 94 90",  //
                            "0.300 on 1 87 0", "0.300 on 1 90 0", "0.300 on 1 94 0",     //
                            "0.600 on 1 87 90", "0.600 on 1 91 90", "0.600 on 1 94 90",  //
                            "0.600 on 1 87 0", "0.600 on 1 91 0", "0.600 on 1 94 0",     //
                            "0.900 on 1 87 90", "0.900 on 1 90 90", "0.900 on 1 93 90"));
    EXPECT_THAT(screen.keys, IsEmpty());
    EXPECT_EQ(screen.score, "3 1 75.00%");
    EXPECT_FALSE(ear.unload());
    chord.startOrStop();
    EXPECT_EQ(messages(), Lines({"on 1 87 0", "on 1 90 0", "on 1 93 0"}));
    EXPECT_TRUE(chord.resetVisible());
    EXPECT_TRUE(ear.unload());

    chord.startOrStop();
    EXPECT_EQ(messages().front(), "on 1 87 0") << "the stopped chord is silenced again";
}

TEST_F(EarTest, ExcludedChordTypesAreNotDrawn) {
    for (const int type : {0, 1, 2, 3})
        chord.toggleAvailable(type);
    ear.choose(chord);
    clickKeys({24, 24});
    willDraw(4, {3, 2, 3, 1});
    messages();
    chord.startOrStop();
    EXPECT_EQ(messages(), Lines({"on 1 60 90", "on 1 64 90", "on 1 67 90"}));
    EXPECT_EQ(random.drawn, 4) << "one root needs no draw";
}

TEST_F(EarTest, WithoutARangeAnAnswerIsJudgedButNothingSounds) {
    ear.choose(chord);
    messages();
    willDraw(4, {1});
    chord.typeClicked(0);
    chord.typeClicked(1);
    EXPECT_EQ(screen.score, "2 0 100.00%");
    EXPECT_THAT(messages(), IsEmpty());
    clickKeys({10});
    random.numbers = {0.0F, 0.99F};
    chord.typeClicked(1);
    EXPECT_EQ(messages(), Lines({"on 1 46 90", "on 1 49 90", "on 1 53 90"}));
    ear.choose(pitch);
    EXPECT_EQ(messages(), Lines({"on 1 0 0", "on 1 0 0", "on 1 46 0", "on 1 49 0", "on 1 53 0"}))
        << "choosing another exercise ends the chord";
}

TEST(EarTraining, ChoosingAnotherExerciseEndsItsNotes) {
    using Act = std::function<void(EarWorld&)>;
    const Act sounds[] = {
        [](EarWorld& world) {
            world.clickKeys({20, 30, 25});
        },
        [](EarWorld& world) {
            world.ear.choose(world.interval);
            for (int i = 0; i < 2; ++i)
                world.interval.stepMode();
            world.interval.semitonesClicked(7);
        },
        [](EarWorld& world) {
            world.ear.choose(world.chord);
            world.clickKeys({24, 24});
            world.chord.typeClicked(0);
        },
    };
    const Act choices[] = {[](EarWorld& world) { world.ear.choose(world.pitch); },
                           [](EarWorld& world) { world.ear.choose(world.interval); },
                           [](EarWorld& world) { world.ear.choose(world.chord); }};
    for (const Act& sound : sounds) {
        for (const Act& choose : choices) {
            for (const bool whileItLetsEventsRun : {false, true}) {
                EarWorld world;
                if (whileItLetsEventsRun)
                    world.runtime.at(0ns, [&] { choose(world); });
                sound(world);
                world.runtime.runActs();
                if (!whileItLetsEventsRun)
                    choose(world);
                EXPECT_THAT(world.sounding(), IsEmpty());
                EXPECT_FALSE(world.pitch.startVisible());
            }
        }
    }
}

TEST_F(EarTest, ChoosingAnExerciseBeginsAnew) {
    clickKeys({20, 30, 25});
    ear.choose(interval);
    EXPECT_TRUE(interval.visible());
    EXPECT_FALSE(pitch.startVisible());
    EXPECT_EQ(messages().back(), "on 1 61 0");
    EXPECT_FALSE(ear.unload()) << "the prompt still asks for the reference";
    ear.choose(chord);
    EXPECT_THAT(screen.marks, IsEmpty());
    EXPECT_FALSE(screen.close);
    clickKeys({30, 40});
    ear.choose(pitch);
    EXPECT_FALSE(chord.visible());
    EXPECT_THAT(screen.marks, IsEmpty());
    clickKeys({50, 55});
    EXPECT_EQ(screen.prompt, PitchExercise::kChooseReference);
    EXPECT_FALSE(pitch.startVisible()) << "no reference has been chosen";
}

TEST_F(EarTest, TheComputerKeyboardPlaysUntilTheWindowCloses) {
    runtime.press('O', 0ms, 500ms);  // the menu's shortcut
    runtime.press('Z', 1000ms, 1200ms);
    runtime.press(kKeyBackspace, 1300ms, 1400ms);
    runtime.at(1500ms, [this] { ear.pianoKeys().cycleOctave(); });
    runtime.press('Z', 1600ms, 9000ms);
    runtime.at(2000ms, [this] {
        EXPECT_EQ(screen.keys, std::set<int>({24}));
        EXPECT_TRUE(ear.unload());
        EXPECT_THAT(screen.keys, IsEmpty());
    });
    runtime.yield();
    ear.activate();
    EXPECT_EQ(runtime.now(), Instant(2s));
    EXPECT_THAT(midi.take(), ElementsAre("1.000 on 1 48 90", "1.200 on 1 48 0",  //
                                         "1.300 on 1 80 90", "1.400 on 1 80 0", "1.600 on 1 60 90",
                                         "2.000 on 1 60 0"));
    EXPECT_LT(runtime.passes(), 15) << "a pass is taken when something happened";
    runtime.runActs();
}
