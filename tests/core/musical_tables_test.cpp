#include "core/instruments.h"
#include "core/intervals.h"
#include "core/pitch.h"
#include "core/random.h"
#include "core/text.h"
#include "support/test_world.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

TEST(Pitch, NamesAndStepsAreThoseOfTheChromaticScale) {
    // From La upwards every natural note has the next letter.
    const QString scale = QStringLiteral("Do Do# Re Re# Mi Fa Fa# Sol Sol# La La# Si");
    int step = 14;
    for (int number = -36; number < 200; ++number) {
        const bool playable = number >= 36 && number <= 95;
        const QString name = playable ? scale.split(u' ').at(number % 12) : QString();
        EXPECT_EQ(pitch::NoteName(number), number == 0 ? "P" : name) << number;
        const bool natural = playable && !name.endsWith(u'#');
        ASSERT_EQ(pitch::NoteNumberToStep(number).value_or(-1), natural ? step : -1) << number;
        if (!natural)
            continue;
        EXPECT_EQ(pitch::StepToNoteIndex(step), pitch::noteIndexOf(pitch::NoteNumber(number)));
        EXPECT_EQ(pitch::noteNumberOf(*pitch::StepToNoteIndex(step)), number);
        EXPECT_EQ(pitch::answerName(step % 7, pitch::AnswerNames::Syllables), name.toUpper());
        EXPECT_EQ(pitch::answerName(step % 7, pitch::AnswerNames::Letters),
                  QString(QChar('A' + (step + 2) % 7)));
        ++step;
    }
    EXPECT_FALSE(pitch::StepToNoteIndex(13) || pitch::StepToNoteIndex(step));
    EXPECT_TRUE(pitch::answerName(-1, pitch::AnswerNames::Letters).isEmpty());
    EXPECT_TRUE(pitch::answerName(7, pitch::AnswerNames::Letters).isEmpty());
}

TEST(Random, DrawsCoverARangeEvenlyAndNeverLeaveIt) {
    TestWorld world;
    EXPECT_EQ(world.funzioniMM.RandomNoteIndex(4, 4), 4);
    EXPECT_EQ(world.random.drawn, 0) << "equal bounds draw nothing";
    EXPECT_EQ(world.funzioniMM.RandomNoteIndex(4, 5), 4);
    EXPECT_EQ(world.random.drawn, 1);
    for (std::int16_t lower = -1; lower < 60; ++lower) {
        for (std::int16_t upper = lower; upper < 60; ++upper) {
            const int count = upper - lower + 1;
            EXPECT_EQ(drawBetween(lower, upper, std::nextafter(1.0F, 0.0F)), upper);
            for (int i = 0; i < count; ++i)
                EXPECT_EQ(drawBetween(lower, upper, (float(i) + 0.5F) / float(count)), lower + i);
        }
    }
}

TEST(Intervals, HaveTheSizesOfTheMajorScale) {
    using enum intervals::Quality;
    const int major[] = {0, 2, 4, 5, 7, 9, 11, 12};
    int last = 0;
    for (const auto& [semitones, number, quality, group] : intervals::kAll) {
        const bool perfect = number == 4 || number == 5 || number == 8;
        const std::map<intervals::Quality, int> shift{
            {Dim, perfect ? -1 : -2}, {Min, -1}, {Mag, 0}, {Gius, 0}, {Ecc, 1}};
        EXPECT_EQ(semitones, major[number - 1] + shift.at(quality)) << number;
        const bool natural = quality != Dim && quality != Ecc;
        EXPECT_TRUE(!natural || perfect == (quality == Gius)) << number;
        EXPECT_EQ(group, !natural || number == 7 ? intervals::Group::Dissonant
                         : number == 2           ? intervals::Group::ConsonantInMelody
                                                 : intervals::Group::Consonant);
        EXPECT_LE(last, semitones);
        last = semitones;
    }
    EXPECT_EQ(intervals::kAll.size(), 25U) << "three perfect ones of three, four others of four";
    EXPECT_EQ(intervals::semitonesInWords(1), "1 semitono");
    EXPECT_EQ(intervals::semitonesInWords(2), "2 semitoni");
    EXPECT_EQ(intervals::inWords(intervals::rowOf(3, Mag)), "Terza maggiore");
    EXPECT_EQ(intervals::nameOf(intervals::rowOf(8, Gius)), "8 Gius");
}

TEST(Instruments, StandInTheFamiliesOfGeneralMidi) {
    const std::tuple<const char*, int, int> families[] = {
        {"Piano", 0, 5},     {"Organ", 16, 20}, {"Guitar", 24, 31}, {"Bass", 32, 39},
        {"Strings", 44, 45}, {"Sax", 64, 67},   {"Lead", 80, 87},   {"Pad", 88, 95},
        {"FX", 96, 103},     {"Choir", 52, 52}, {"Violin", 40, 40}, {"Gunshot", 127, 127}};
    QStringList names;
    for (int program = 0; program < 128; ++program) {
        names << instruments::InstrumentName(program);
        EXPECT_EQ(instruments::caption(program), QString::number(program) + '-' + names.back());
    }
    for (const auto& [word, first, last] : families)
        EXPECT_EQ(names.mid(first, last - first + 1).filter(word).size(), last - first + 1) << word;
    EXPECT_EQ(names.removeDuplicates(), 5) << "five pairs of neighbours share a name";
    EXPECT_TRUE(instruments::InstrumentName(-1).isEmpty());
    EXPECT_TRUE(instruments::InstrumentName(128).isEmpty());
}

TEST(Text, PercentagesAreRoundedToHundredths) {
    const std::tuple<int, int, const char*> rows[] = {
        {1, 2, "50.00%"}, {2, 3, "66.67%"}, {1, 32, "3.13%"}, {1, 20, "5.00%"}, {7, 0, "0.00%"}};
    for (const auto& [part, whole, shown] : rows)
        EXPECT_EQ(text::percentage(part, whole), shown);
}
