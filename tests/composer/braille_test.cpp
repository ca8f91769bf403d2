#include "composer/any_melody.h"
#include "composer/braille_reader.h"
#include "composer/exchange/braille_cells.h"
#include "composer/exchange/braille_writer.h"
#include "composer/exchange/score_heading.h"

#include <QFile>

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

namespace {

/// A few equal entries as braille music without bars, read back; without the bar's number and the
/// double bar.
QString signsOf(std::size_t count, pitch::NoteNumber note, int units, char letter) {
    const Melody melody = melodyOf(std::vector(count, lasting(units, note, letter)));
    const QString text =
        braille::write(score::barsOf(melody, score::kWithoutBars), {"", 60, 0}).section('\n', 1);
    BrailleReader reader(score::kWithoutBars);
    reader.read(QString::fromLatin1(braille::ascii(text)));
    const BrailleReader::Sound wanted{note, units, letter};
    EXPECT_EQ(reader.sounds, std::vector(count, wanted));
    EXPECT_TRUE(reader.fault.isEmpty());
    return text.trimmed().section(QChar(braille::kBlank), 1).chopped(2);
}

QString brailleTable() {
    QString table =
        "Braille music as the program writes it, without bars, in the key of Do maggiore.\n"
        "A line has the twelve notes of an octave, from Do to Si, with the sharps between them.\n"
        "Each begins with what the first note of a piece needs: the sign of small values, from\n"
        "1/16 on, and the mark of the octave. A test holds this file against the program.\n";
    const auto eachValue = [](const auto& write) {
        for (const note_values::NoteValue& value : note_values::kWritten) {
            const int units = static_cast<int>(value.quarters * 96);
            write(value, QString(value.fraction), units);
            if (&value != &note_values::kWritten.back())
                write(value, QString(value.fraction) + ".", units * 3 / 2);
        }
    };
    for (const letter::EntryLetter& row : letter::kAll) {
        if (row.isRest())
            continue;
        table += QStringLiteral("\n%1 (%2)\n").arg(row.name, QChar(row.letter));
        eachValue([&](const auto&, const QString& name, int units) {
            for (int octave = 2; octave <= 6; ++octave) {
                QStringList cells{QStringLiteral("%1 ottava %2:").arg(name).arg(octave)};
                for (int note = 0; note < 12; ++note) {
                    const auto number = static_cast<pitch::NoteNumber>((octave + 1) * 12 + note);
                    cells += signsOf(1, number, units, row.letter);
                }
                table += cells.join(' ') + '\n';
            }
        });
    }
    table += "\npause, e terzine di tre Do centrali\n";
    eachValue([&](const auto& value, const QString& name, int units) {
        table += name + ": " + signsOf(1, 0, units, 'p');
        const bool dotted = units > value.quarters * 96;
        table += (dotted ? QString() : ", " + signsOf(3, 60, units * 2 / 3, 'n')) + '\n';
    });
    return table;
}

}  // namespace

/// Every value, note, octave and letter. With BRAILLE_TABLE=FILE the table is written there.
TEST(Braille, IsAsTheTableOfTheDocumentationShows) {
    const QByteArray table = brailleTable().toUtf8();
    if (QFile output(qEnvironmentVariable("BRAILLE_TABLE")); !output.fileName().isEmpty()) {
        ASSERT_TRUE(output.open(QIODevice::WriteOnly));
        output.write(table);
    }
    QFile file(QStringLiteral(DOCUMENTED_BRAILLE));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == table) << "docs/braille-table.txt is another";
}

/// What a reader of the manual can check by eye: every kind of sign in three bars.
TEST(Braille, LooksAsTheManualPrintsIt) {
    const Melody melody = melodyOf({lasting(96), lasting(96, 64, 's'), lasting(48, 72, 't'),
                                    lasting(144, 66, 'a'), lasting(32, 67), lasting(32, 69),
                                    lasting(32, 71), lasting(192, 0, 'p'), lasting(192, 59)});
    const score::BarView view = score::barsOf(melody, {score::Metre{4, 4}, {1, false}});
    EXPECT_EQ(braille::ascii(braille::write(view, {"Eh, Più 120", 112, 0})).simplified(),
              ".EH1 .PI) #ABJ ?7#AAB %#D4 #A \"?8$_8.D.8\"]' 2HIJU_W@C W<K");
}
