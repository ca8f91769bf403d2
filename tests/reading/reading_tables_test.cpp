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
    // Steps below the range sound its lowest note.
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
    const auto note = [](int step) { return staff_step::soundingNote(step) + pitch::kLowestNote; };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        choice.chooseItem(i);
        const auto [lower, upper] = choice.range();
        EXPECT_TRUE(lower == rows[i].lower && upper == rows[i].upper) << i;
        EXPECT_TRUE(note(lower) == rows[i].lowestNote && note(upper) == rows[i].highestNote) << i;
    }
}

TEST(StaffStep, PlacesInWords) {
    const std::pair<int, const char*> places[] = {
        {46, "Chiave di Sol, prima linea"},
        {49, "Chiave di Sol, secondo spazio"},
        {55, "Chiave di Sol, sopra la quinta linea"},
        {45, "Chiave di Sol, sotto la prima linea"},
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
    for (const auto& [twips, step] : {std::pair{4545, 11}, {2730, 31}, {2310, 40}, {90, 64}})
        EXPECT_EQ(ruler::stepAt(twips), step);
    EXPECT_FALSE(ruler::bandOf(35));
}

TEST(StepRangeChoice, TwoClicksChooseTheRangeAndTheStartWaitsForBoth) {
    const auto y = [](int step) { return ruler::bandOf(step)->centre(); };
    StepRangeChoice choice;
    EXPECT_EQ(choice.click(y(55)), 55);
    EXPECT_FALSE(choice.startAllowed());
    EXPECT_FALSE(choice.click(4640)) << "between two bands";
    EXPECT_FALSE(choice.startAllowed());
    EXPECT_EQ(choice.click(y(41)), 41);
    EXPECT_TRUE(choice.startAllowed() && !choice.acceptsClicks());
    EXPECT_TRUE(choice.range().lower == 41 && choice.range().upper == 55);

    choice.forgetClicks();
    EXPECT_TRUE(choice.acceptsClicks() && choice.nothingChosen());
    EXPECT_EQ(choice.range().lower, 41) << "the range outlives its clicks";
    EXPECT_FALSE(choice.click(2500));
    EXPECT_FALSE(choice.startAllowed());
    choice.chooseItem(5);
    EXPECT_TRUE(choice.startAllowed()) << "a session can be started again";
    EXPECT_EQ(choice.inWords(pitch::AnswerNames::Letters), "Note da G a A");
}

TEST(AnswerKeys, CharactersInEitherCase) {
    const std::pair<std::u32string_view, int> keys[] = {
        {U"dD", 0}, {U"1", 1}, {U"fF", 2}, {U"2", 3}, {U"gG", 4}, {U"3", 5}, {U"hH", 6}};
    for (const auto& [typed, degree] : keys) {
        for (const char32_t character : typed)
            EXPECT_EQ(answer_keys::degreeOf(character), degree);
    }
    for (const char32_t other : {U'4', U'a', U'\0', U'\u00E0'})
        EXPECT_FALSE(answer_keys::degreeOf(other));
}
