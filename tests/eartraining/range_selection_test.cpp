#include "eartraining/ear_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

struct Selection {
    std::vector<int> clicks;
    EarPrompt prompt;
    std::set<int> marks;
    std::vector<std::string> messages;
    int lower;
    int upper;
    bool start = false;  ///< the start button is on show
};

void clickAll(EarWorld& world, const Selection& selection) {
    SCOPED_TRACE(testing::PrintToString(selection.clicks));
    for (const int click : selection.clicks)
        world.clickKeys({click});
    EXPECT_EQ(world.screen.prompt, selection.prompt);
    EXPECT_EQ(world.screen.marks, selection.marks);
    std::vector<std::string> messages;
    for (const std::string& message : selection.messages)
        messages.push_back("message: " + message);
    EXPECT_THAT(world.dialogs.lines, ElementsAreArray(messages));
    EXPECT_FALSE(world.screen.close);
}

}  // namespace

TEST(NoteRangeSelection, FollowsEachSequenceOfClicks) {
    const std::string small = "Intervallo troppo piccolo !!!";
    const std::string notAllowed = "Intervallo non consentito !!!";
    const std::string outside = "Scegli il riferimento all'interno dell'intervallo !!!";
    const std::vector<Selection> kCases{
        {{20}, range_prompts::kUpperKey, {20}, {}, -1, 20},
        {{20, 22}, PitchExercise::kChooseReference, {20, 22}, {}, 20, 22},
        {{20, 18}, PitchExercise::kChooseReference, {18, 20}, {}, 18, 20},
        {{20, 20}, range_prompts::kUpperKey, {20}, {small}, 20, 20},
        {{20, 21}, range_prompts::kUpperKey, {20}, {small}, 20, 20},
        {{20, 19}, range_prompts::kUpperKey, {20}, {notAllowed}, 19, 20},
        {{20, 19, 21, 22}, PitchExercise::kChooseReference, {20, 22}, {notAllowed, small}, 20, 22},
        {{20, 21, 10}, PitchExercise::kChooseReference, {10, 20}, {small}, 10, 20},
        {{20, 30, 19, 31}, PitchExercise::kChooseReference, {20, 30}, {outside, outside}, 20, 30},
        {{20, 30, 25}, PitchExercise::kChooseReference, {20, 25, 30}, {}, 20, 30, true},
        {{20, 30, 25, 30}, PitchExercise::kChooseReference, {20, 30}, {}, 20, 30, true},
        {{20, 30, 20, 25}, PitchExercise::kChooseReference, {20, 25, 30}, {}, 20, 30, true},
    };
    for (const Selection& selection : kCases) {
        EarWorld world;
        clickAll(world, selection);
        EXPECT_EQ(world.funzioniMM.rangeLower(), selection.lower);
        EXPECT_EQ(world.funzioniMM.rangeUpper(), selection.upper);
        EXPECT_EQ(world.pitch.startVisible(), selection.start);
        EXPECT_EQ(world.ear.unload(), selection.prompt != PitchExercise::kChooseReference);
    }
}

TEST(NoteRangeSelection, TheReferenceSoundsUntilTheNextOneAndTheResetEndsIt) {
    EarWorld world;
    world.clickKeys({20, 30, 25, 28});
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 36 0", "on 1 61 100",  //
                                                      "on 1 61 0", "on 1 64 100"));
    world.pitch.reset();
    EXPECT_THAT(world.midi.takeUntimed(), ElementsAre("on 1 64 0"));
    EXPECT_THAT(world.screen.marks, IsEmpty());
    EXPECT_FALSE(world.pitch.startVisible());
    EXPECT_FALSE(world.screen.exerciseMenu) << "until the next stop";
    EXPECT_EQ(world.screen.prompt, range_prompts::kLowerKey);
    EXPECT_FALSE(world.screen.close) << "until the exercise is stopped";
    world.clickKeys({40, 45, 42});
    world.pitch.startOrStop();
    world.pitch.startOrStop();
    EXPECT_TRUE(world.screen.exerciseMenu);
    EXPECT_TRUE(world.screen.close);
}

TEST(ChordRangeSelection, FollowsEachSequenceOfClicks) {
    const std::string limit = "Limite non consentito !!!";
    const std::string answer = "Riconosci il tipo di accordo suonato !!!";
    const std::vector<Selection> kCases{
        {{52}, range_prompts::kLowerKey, {}, {limit}, -1, -1},
        {{51}, range_prompts::kUpperKey, {51}, {}, -1, 51},
        {{20, 52}, range_prompts::kUpperKey, {20}, {limit}, -1, 20},
        {{20, 20}, ChordExercise::kRecognise, {20}, {}, 20, 20, true},
        {{20, 51}, ChordExercise::kRecognise, {20, 51}, {}, 20, 51, true},
        {{51, 59, 0}, ChordExercise::kRecognise, {0, 51}, {limit}, 0, 51, true},
        {{20, 25, 30, 52}, ChordExercise::kRecognise, {20, 25}, {answer, answer}, 20, 25, true},
    };
    for (const Selection& selection : kCases) {
        EarWorld world;
        world.ear.choose(world.chord);
        clickAll(world, selection);
        EXPECT_EQ(world.chord.range().lower(), selection.lower);
        EXPECT_EQ(world.chord.range().upper(), selection.upper);
        EXPECT_EQ(world.chord.startVisible(), selection.start);
        world.chord.resetRange();
        EXPECT_THAT(world.screen.marks, IsEmpty());
        EXPECT_EQ(world.screen.prompt, range_prompts::kReset);
        world.chord.startOrStop();
        EXPECT_FALSE(world.chord.running()) << "not without a range";
    }
}
