#include "composer/any_melody.h"
#include "composer/exchange/midi_melody.h"
#include "composer/export/melody_score.h"
#include "composer/export/midi_file_writer.h"
#include "composer/playback/articulation.h"

#include <gtest/gtest.h>

namespace {

using midi_recording::Line;
using midi_recording::lineOf;

/// What the file of a melody tells: rests that follow each other are one.
std::vector<MelodyEntry> merged(const Melody& melody) {
    std::vector<MelodyEntry> entries;
    for (const MelodyEntry& entry : melody.entries()) {
        const bool goesOn =
            entry.noteNumber() == 0 && !entries.empty() && entries.back().noteNumber() == 0;
        if (goesOn)
            entries.back() = MelodyEntry::make(
                0, std::round((entries.back().quarters() + entry.quarters()) * 96) / 96, "p", ',');
        else
            entries.push_back(entry);
    }
    return entries;
}

/// A file as another program writes it: notes begin where they should, to the nearest tick, and
/// last so many hundredths of their values.
QByteArray writtenElsewhere(const Melody& melody, int tempo, int hundredths) {
    MelodyScore score;
    double units = 0;
    const auto add = [&](double at, std::uint32_t message) {
        score.endMs = std::lround(at * std::lround(60000.0 / tempo) / 96);
        score.messages.push_back({score.endMs, message});
    };
    for (const MelodyEntry& entry : melody.entries()) {
        const double length = std::round(entry.quarters() * 96);
        const auto note = static_cast<std::uint32_t>(entry.noteNumber()) << 8;
        if (note > 0) {
            add(units, 0x500090 | note);
            add(units + length * hundredths / 100, 0x400080 | note);
        }
        units += length;
    }
    return midi_file::write(score, tempo, "x");
}

}  // namespace

/// The exported file of a melody brings it back, unless an entry is too short for the player, or
/// another melody sounds exactly alike.
TEST(MidiImport, BringsExportedMelodiesBack) {
    std::mt19937 random(11U + testing::UnitTest::GetInstance()->random_seed());
    int same = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<int> units;
        const Melody melody = anyMelody(random, units);
        const int tempo = 20 + static_cast<int>(random() % 231);
        const bool tooShort = std::any_of(units.begin(), units.end(), [tempo](int length) {
            return totalMs(length / 96.0, tempo) <= 2 * Articulation::kGapMs || length == 1;
        });
        const MelodyScore score = scoreOf(melody, tempo, round % 128);
        const auto wanted = merged(melody);
        const bool silent = wanted.size() == 1 && wanted.front().noteNumber() == 0;
        if (tooShort || silent)
            continue;
        const auto recording = midi_recording::read(midi_file::write(score, tempo, "x"));
        ASSERT_TRUE(recording.fault.isEmpty());
        ASSERT_EQ(recording.program, round % 128);
        const Line line = lineOf(recording, ',');
        ASSERT_TRUE(line.faults.isEmpty()) << round << line.faults.join(' ').toStdString();
        ASSERT_EQ(line.tempo, tempo);
        same += line.entries == wanted;
        if (line.entries != wanted) {
            const MelodyScore other = scoreOf(melodyOf(line.entries), tempo, round % 128);
            ASSERT_EQ(other.messages.size(), score.messages.size());
            for (std::size_t i = 0; i < score.messages.size(); ++i) {
                ASSERT_EQ(other.messages[i].message, score.messages[i].message);
                ASSERT_NEAR(other.messages[i].ms, score.messages[i].ms, 20 + 3.0 * i) << round;
            }
        }
    }
    EXPECT_GT(same, 900) << same;
}

TEST(MidiImport, ReadsWhatOtherProgramsWrite) {
    std::mt19937 random(12);
    for (int round = 0; round < 1000; ++round) {
        std::vector<int> units;
        Melody melody = anyMelody(random, units);
        auto wanted = merged(melody);
        while (!wanted.empty() && wanted.back().noteNumber() == 0)
            wanted.pop_back();
        if (wanted.empty())
            continue;
        const bool onGrid = std::all_of(wanted.begin(), wanted.end(), [](const MelodyEntry& entry) {
            const int length = static_cast<int>(std::lround(entry.quarters() * 96));
            return length > 0 && (length % 2 == 0 || length % 3 == 0);
        });
        if (!onGrid)
            continue;
        for (MelodyEntry& entry : wanted)
            entry.attribute = entry.noteNumber() > 0 ? "n" : "p";
        const int tempo = 20 + static_cast<int>(random() % 231);
        const Line line = lineOf(midi_recording::read(writtenElsewhere(melody, tempo, 100)), ',');
        ASSERT_TRUE(line.faults.isEmpty()) << round << line.faults.join(' ').toStdString();
        const auto [first, other] =
            std::mismatch(line.entries.begin(), line.entries.end(), wanted.begin(), wanted.end());
        ASSERT_TRUE(first == line.entries.end() && other == wanted.end())
            << round << " at " << first - line.entries.begin() << ": "
            << first->duration.toStdString() << " of tempo " << tempo;
        ASSERT_NEAR(line.tempo, tempo, 0.5);
    }
}

/// Damaged files, and what is no line of one voice on the grid: a melody or a reason.
TEST(MidiImport, OutlivesDamagedFilesAndGivesReasons) {
    std::mt19937 random(13U + testing::UnitTest::GetInstance()->random_seed());
    for (int round = 0; round < 4000; ++round) {
        std::vector<int> units;
        QByteArray bytes = writtenElsewhere(anyMelody(random, units), 20 + random() % 231, 90);
        for (auto count = random() % 5; count > 0; --count) {
            const auto at = static_cast<qsizetype>(random() % bytes.size());
            if (random() % 2)
                bytes[at] = static_cast<char>(random());
            else
                bytes.remove(at, static_cast<qsizetype>(random() % 9));
        }
        const auto recording = midi_recording::read(bytes);
        if (!recording.fault.isEmpty())
            continue;
        const Line line = lineOf(recording, '.');
        ASSERT_EQ(line.entries.empty(), !line.faults.isEmpty());
        for (const MelodyEntry& entry : line.entries)
            ASSERT_TRUE(entry.noteNumber() == 0 || pitch::isPlayable(entry.noteNumber()));
    }
    using midi_recording::Note;
    const std::pair<std::vector<Note>, const char*> cases[] = {
        {{}, "non ha note"},
        {{{0, 96, 60, 80, 0}, {0, 96, 64, 80, 0}}, "battuta 1: accordo"},
        {{{0, 800, 60, 80, 0}, {400, 500, 64, 80, 1}}, "battuta 2: più voci"},
        {{{0, 96, 35, 80, 0}}, "fuori dalle 5"},
        {{{0, 96, 60, 80, 9}}, "percussioni"},
        {{{0, 96, 60, 80, 0}, {97, 192, 60, 80, 0}}, "non comincia"},
    };
    for (const auto& [notes, fault] : cases) {
        midi_recording::Recording recording;
        recording.ticksPerQuarter = 96;
        recording.notes = notes;
        EXPECT_TRUE(lineOf(recording, '.').faults.join(' ').contains(fault)) << fault;
    }
}
