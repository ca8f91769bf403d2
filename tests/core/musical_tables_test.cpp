#include "core/instruments.h"
#include "core/pitch.h"

#include <QStringList>

#include <gtest/gtest.h>

TEST(Pitch, NamesAndStepsAreThoseOfTheChromaticScale) {
    using enum pitch::AnswerNames;
    using pitch::answerName;
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
        EXPECT_EQ(pitch::noteNumberOf(*pitch::StepToNoteIndex(step)), number);
        EXPECT_EQ(answerName(step % 7, Syllables), name.toUpper());
        EXPECT_EQ(answerName(step % 7, Letters), QString(QChar('A' + (step + 2) % 7)));
        ++step;
    }
    EXPECT_FALSE(pitch::StepToNoteIndex(13) || pitch::StepToNoteIndex(step));
    EXPECT_EQ(answerName(-1, Letters) + answerName(7, Letters), "");
}

TEST(Instruments, StandInTheFamiliesOfGeneralMidi) {
    const std::tuple<const char*, int, int> families[] = {
        {"Piano", 0, 5},     {"Organ", 16, 20}, {"Guitar", 24, 31}, {"Bass", 32, 39},
        {"Strings", 44, 45}, {"Sax", 64, 67},   {"Lead", 80, 87},   {"Pad", 88, 95},
        {"FX", 96, 103},     {"Choir", 52, 52}, {"Violin", 40, 40}, {"Gunshot", 127, 127}};
    QStringList names;
    for (int program = 0; program < 128; ++program) {
        names << instruments::InstrumentName(program);
        EXPECT_EQ(
            instruments::InstrumentName(program - 128) + instruments::InstrumentName(program + 128),
            "");
        EXPECT_EQ(instruments::caption(program), QString::number(program) + '-' + names.back());
    }
    for (const auto& [word, first, last] : families)
        EXPECT_EQ(names.mid(first, last - first + 1).filter(word).size(), last - first + 1) << word;
}
