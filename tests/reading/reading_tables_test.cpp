#include "reading/answer_keys.h"
#include "reading/difficulty.h"
#include "reading/ruler.h"
#include "reading/staff_step.h"
#include "reading/step_range_choice.h"

#include <gtest/gtest.h>

TEST(Difficulty, EveryItemSetsItsBoundsAndASeparatorTheFirstOnes) {
    struct Row {
        int lower, upper, lowestNote, highestNote;
    };
    // By note number: 0 stands for steps below the range, which sound its lowest note.
    const std::array<Row, 11> rows{{{43, 53, 59, 76},
                                    {41, 55, 55, 79},
                                    {40, 58, 53, 84},
                                    {40, 62, 53, 91},
                                    {43, 53, 59, 76},
                                    {18, 26, 43, 57},
                                    {16, 28, 40, 60},
                                    {14, 30, 36, 64},
                                    {11, 31, 36, 65},
                                    {43, 53, 59, 76},
                                    {14, 64, 36, 95}}};
    StepRangeChoice choice;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        choice.chooseItem(i);
        EXPECT_EQ(choice.range().lower, rows[i].lower) << i;
        EXPECT_EQ(choice.range().upper, rows[i].upper) << i;
        EXPECT_EQ(pitch::noteNumberOf(staff_step::soundingNote(rows[i].lower)), rows[i].lowestNote);
        EXPECT_EQ(pitch::noteNumberOf(staff_step::soundingNote(rows[i].upper)),
                  rows[i].highestNote);
    }
}

TEST(StaffStep, DegreesOfBothSystemsAndPlacesInWords) {
    const std::array<const char*, 7> names{"DO", "RE", "MI", "FA", "SOL", "LA", "SI"};
    for (const auto& [step, degree] :
         {std::pair{14, 0}, {28, 0}, {44, 0}, {40, 3}, {64, 6}, {11, 4}, {31, 3}, {50, 6}}) {
        EXPECT_EQ(staff_step::degree(step), degree) << step << " " << names[degree];
    }
    const std::pair<int, const char*> places[] = {
        {46, "Chiave di Sol, prima linea"},
        {49, "Chiave di Sol, secondo spazio"},
        {54, "Chiave di Sol, quinta linea"},
        {55, "Chiave di Sol, sopra la quinta linea"},
        {45, "Chiave di Sol, sotto la prima linea"},
        {44, "Chiave di Sol, primo taglio addizionale in basso"},
        {43, "Chiave di Sol, sotto il primo taglio addizionale in basso"},
        {64, "Chiave di Sol, quinto taglio addizionale in alto"},
        {28, "Chiave di Fa, primo taglio addizionale in alto"},
        {11, "Chiave di Fa, sotto il terzo taglio addizionale in basso"},
        {35, ""}};
    for (const auto& [step, words] : places)
        EXPECT_EQ(staff_step::placeInWords(step), QString::fromUtf8(words)) << step;
}

TEST(Ruler, BandsHoldTheirEndsAndNothingBetweenThem) {
    for (const int step : staff_step::all()) {
        const auto band = ruler::bandOf(step);
        ASSERT_TRUE(band) << step;
        EXPECT_EQ(ruler::stepAt(band->top), step);
        EXPECT_EQ(ruler::stepAt(band->bottom), step);
        EXPECT_FALSE(ruler::stepAt(band->top - 1)) << "above " << step;
        EXPECT_FALSE(ruler::stepAt(band->bottom + 1)) << "below " << step;
    }
    EXPECT_EQ(ruler::stepAt(4545), 11);
    EXPECT_EQ(ruler::stepAt(2730), 31);
    EXPECT_EQ(ruler::stepAt(2310), 40);
    EXPECT_EQ(ruler::stepAt(90), 64);
    EXPECT_FALSE(ruler::stepAt(2500));
    EXPECT_FALSE(ruler::bandOf(35));
}

TEST(StepRangeChoice, TwoClicksChooseTheRangeAndTheStartWaitsForBoth) {
    const auto y = [](int step) { return ruler::bandOf(step)->centre(); };
    StepRangeChoice choice;
    EXPECT_TRUE(choice.nothingChosen());
    EXPECT_EQ(choice.click(y(55)), 55);
    EXPECT_FALSE(choice.startAllowed());
    EXPECT_FALSE(choice.click(4640)) << "between two bands";
    EXPECT_FALSE(choice.startAllowed());
    EXPECT_EQ(choice.click(y(41)), 41);
    EXPECT_TRUE(choice.startAllowed());
    EXPECT_EQ(choice.range().lower, 41);
    EXPECT_EQ(choice.range().upper, 55);
    EXPECT_FALSE(choice.acceptsClicks());

    choice.forgetClicks();
    EXPECT_TRUE(choice.acceptsClicks());
    EXPECT_EQ(choice.range().lower, 41) << "the range outlives its clicks";
    EXPECT_FALSE(choice.click(2500));
    EXPECT_FALSE(choice.startAllowed());
    choice.chooseItem(5);
    EXPECT_TRUE(choice.startAllowed()) << "nobody is left stuck";
    EXPECT_EQ(choice.inWords(pitch::AnswerNames::Letters), QStringLiteral("Note da G a A"));
}

TEST(AnswerKeys, CharactersInEitherCase) {
    for (const auto& [typed, degree] : {std::pair{U'd', 0},
                                        {U'D', 0},
                                        {U'1', 1},
                                        {U'F', 2},
                                        {U'2', 3},
                                        {U'g', 4},
                                        {U'3', 5},
                                        {U'H', 6}})
        EXPECT_EQ(answer_keys::degreeOf(typed), degree);
    for (const char32_t other : {U'4', U'a', U'\0', U'\u00E0'})
        EXPECT_FALSE(answer_keys::degreeOf(other));
}
