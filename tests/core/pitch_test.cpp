#include "core/pitch.h"

#include "core/instruments.h"
#include "core/random.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <limits>

TEST(Pitch, NamesOnlyTheFiveOctavesAndTheRest) {
    const std::pair<int, const char*> names[] = {{0, "P"},    {35, ""},    {36, "Do"}, {60, "Do"},
                                                 {61, "Do#"}, {94, "La#"}, {95, "Si"}, {96, ""},
                                                 {-1, ""},    {1, ""},     {-36, ""}};
    for (const auto& [number, name] : names)
        EXPECT_EQ(pitch::NoteName(number), QLatin1String(name)) << number;
}

TEST(Pitch, StepsAndNaturalNotesAreOneToOne) {
    EXPECT_EQ(pitch::StepToNoteIndex(28), 24);
    EXPECT_FALSE(pitch::StepToNoteIndex(13) || pitch::StepToNoteIndex(49));
    int naturals = 0;
    for (int number = 0; number < 128; ++number) {
        const auto step = pitch::NoteNumberToStep(number);
        const QString name = pitch::NoteName(number);
        EXPECT_EQ(step.has_value(), pitch::isPlayable(number) && !name.endsWith(QLatin1Char('#')));
        if (step) {
            ++naturals;
            EXPECT_EQ(pitch::noteNumberOf(*pitch::StepToNoteIndex(*step)), number);
        }
    }
    EXPECT_EQ(naturals, 35);
}

TEST(Pitch, DrawsCoverARangeAndNeverLeaveIt) {
    const float largest = std::nextafter(1.0F, 0.0F);
    for (std::int16_t lower = 0; lower < 60; ++lower) {
        for (std::int16_t upper = lower; upper < 60; ++upper) {
            EXPECT_EQ(drawBetween(lower, upper, 0.0F), lower);
            EXPECT_EQ(drawBetween(lower, upper, largest), upper);
        }
    }
    EXPECT_EQ(drawBetween(10, 13, 0.5F), 12);
}

TEST(Instruments, NamesAndCaptions) {
    const std::pair<int, const char*> names[] = {
        {-1, ""}, {0, "Acoustic Grand Piano"}, {37, "Slap Bass"}, {127, "Gunshot"}, {128, ""}};
    for (const auto& [program, name] : names)
        EXPECT_EQ(instruments::InstrumentName(program), QLatin1String(name));
    EXPECT_EQ(instruments::caption(16), "16-Hammond Organ");
}

TEST(Text, PercentagesAreRoundedToHundredths) {
    EXPECT_EQ(text::percentage(1, 2), "50.00%");
    EXPECT_EQ(text::percentage(2, 3), "66.67%");
    EXPECT_EQ(text::percentage(7, 0), "0.00%");
}
