#include "composer/any_melody.h"
#include "composer/braille_reader.h"
#include "composer/exchange/braille_cells.h"
#include "composer/exchange/braille_writer.h"
#include "composer/exchange/score_heading.h"

#include <gtest/gtest.h>

/// Random melodies, with bars and without, are read back as they are, from lines that are nowhere
/// too long and pages of 25 lines.
TEST(Braille, IsReadBackByTheManualsRules) {
    std::mt19937 random(6);
    for (int round = 0; round < 1000; ++round) {
        score::Notation notation = anyNotation(random);
        if (random() % 6 == 0)
            notation.metre.reset();
        std::vector<int> units;
        const Melody melody = anyMelody(random, units);
        const score::BarView view = score::barsOf(melody, notation);
        if (!view.unwritable.empty())
            continue;
        std::vector<BrailleReader::Sound> wanted;
        for (const score::Bar& bar : view.bars) {
            for (const score::WrittenNote& note : bar.notes) {
                if (note.tiedBack)
                    wanted.back().units += note.value.units();
                else
                    wanted.push_back(
                        {note.note, note.value.units(), note.isRest() ? 'p' : note.letter->letter});
            }
        }
        const QString text = QString::fromLatin1(braille::ascii(braille::write(view, {"", 60, 0})));
        for (const QString& page : text.split('\f'))
            ASSERT_LE(page.count('\n'), 25);
        BrailleReader reader(notation);
        reader.read(text.section('\n', 1));
        ASSERT_TRUE(reader.fault.isEmpty()) << reader.fault.toStdString() << text.toStdString();
        ASSERT_EQ(reader.sounds, wanted) << text.toStdString();
    }
}

/// What a reader of the manual can check by eye: every kind of sign in three bars.
TEST(Braille, LooksAsTheManualPrintsIt) {
    MelodyDelta delta;
    const auto add = [&delta](pitch::NoteNumber note, double quarters, const char* letter) {
        delta.others.push_back(MelodyEntry::make(note, quarters, letter, ','));
    };
    add(60, 1, "n");
    add(64, 1, "s");
    add(72, 0.5, "t");
    add(66, 1.5, "a");
    for (const pitch::NoteNumber note : {67, 69, 71})
        add(note, 1 / 3.0, "n");
    add(0, 2, "p");
    add(59, 2, "n");
    Melody melody;
    melody.exchange(delta);
    const score::BarView view = score::barsOf(melody, {score::Metre{4, 4}, {1, false}});
    EXPECT_EQ(braille::ascii(braille::write(view, {"Eh, Più 12", 112, 0})).simplified(),
              ".EH1 .PI) #AB ?7#AAB %#D4 #A \"?8$_8.D.8\"]' 2HIJU_W@C W<K");
}
