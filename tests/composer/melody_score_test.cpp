#include "composer/export/melody_score.h"

#include "composer/export/midi_file_writer.h"
#include "composer/melody/composition.h"
#include "composer/playback/melody_player.h"
#include "support/test_world.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <utility>

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class NoView : public PlayerView {
public:
    void showPlaying(bool) override {}
    void enableCanc(bool) override {}
    void showEntryNumber(const QString&) override {}
    void showEntryName(const QString&) override {}
    void markKey(pitch::NoteIndex, bool) override {}
    void focusPlay() override {}
};

Composition compositionOf(const MelodyTexts& texts, int tempo) {
    Composition composition;
    Melody::Reading reading = Melody::read(texts);
    MelodyDelta delta{0, 0, std::move(reading.entries), true, std::move(reading.damaged)};
    composition.melody.exchange(delta);
    composition.tempo = tempo;
    return composition;
}

/// Every letter, an unknown one, rests, a note beyond the keyboard, and durations that leave a
/// fraction of a millisecond, down to ones that no tempo lets sound.
MelodyTexts varied() {
    MelodyTexts texts;
    int note = 36;
    for (const char* duration :
         {"4", "1,5", "0,75", "0,333333333333333", "0,1875", "0,0625", "0,01"}) {
        for (const char* letter : {"s", "t", "a", "x", "p", "n"}) {
            const bool isRest = *letter == 'p';
            texts.notes += (isRest ? QStringLiteral("00") : QString::number(note)) + u';';
            texts.durations += QLatin1String(duration) + QLatin1Char(';');
            texts.attributes += QLatin1String(letter) + QLatin1Char(';');
            note += 3;
        }
    }
    return texts;
}

/// A message as the recorder of the MIDI output writes it down.
std::string lineOf(double seconds, unsigned status, unsigned data1, unsigned data2) {
    std::array<char, 48> line{};
    if (status == 0xC0)
        std::snprintf(line.data(), line.size(), "%.3f program %u", seconds, data1);
    else
        std::snprintf(line.data(), line.size(), "%.3f on %u %u %u", seconds, status - 0x8F, data1,
                      data2);
    return line.data();
}

std::vector<std::string> linesOf(const MelodyScore& score) {
    std::vector<std::string> lines;
    for (const auto& [ms, message] : score.messages)
        lines.push_back(lineOf(static_cast<double>(ms) / 1000, message & 0xFF, message >> 8 & 0xFF,
                               message >> 16));
    return lines;
}

/// Reads a MIDI file by its own tempo and division.
class MidiReader {
public:
    explicit MidiReader(const QByteArray& bytes) : bytes_(bytes) {}

    unsigned bigEndian(int size) {
        unsigned number = 0;
        while (size-- > 0)
            number = number << 8 | static_cast<unsigned char>(bytes_.at(at_++));
        return number;
    }

    /// The events, a meta event as "0.000 meta 3 Nome".
    std::vector<std::string> events() {
        EXPECT_EQ(bytes_.left(12), QByteArray("MThd\0\0\0\6\0\0\0\1", 12));
        at_ = 12;
        const unsigned division = bigEndian(2);
        EXPECT_LT(division, 0x8000U);
        EXPECT_EQ(bytes_.mid(14, 4), "MTrk");
        at_ = 18;
        const unsigned length = bigEndian(4);
        EXPECT_EQ(at_ + static_cast<qsizetype>(length), bytes_.size());
        std::vector<std::string> lines;
        double seconds = 0;
        double tick = 0.5 / division;
        while (at_ < bytes_.size()) {
            seconds += variable() * tick;
            const unsigned status = bigEndian(1);
            if (status != 0xFF) {
                const unsigned data1 = bigEndian(1);
                lines.push_back(lineOf(seconds, status, data1, status == 0xC0 ? 0 : bigEndian(1)));
                continue;
            }
            const unsigned kind = bigEndian(1);
            const auto size = static_cast<int>(variable());
            if (kind == 0x51)
                tick = bigEndian(size) * 1e-6 / division;
            const QByteArray content = kind == 0x51 ? QByteArray() : bytes_.mid(at_, size);
            at_ += content.size();
            std::array<char, 48> line{};
            std::snprintf(line.data(), line.size(), "%.3f meta %u %s", seconds, kind,
                          content.constData());
            lines.emplace_back(line.data());
        }
        quarter = division * tick;
        return lines;
    }

    double quarter = 0;  ///< seconds

private:
    double variable() {
        double number = 0;
        unsigned byte = 0x80;
        while ((byte & 0x80) != 0) {
            byte = bigEndian(1);
            number = number * 128 + (byte & 0x7F);
        }
        return number;
    }

    QByteArray bytes_;
    qsizetype at_ = 0;
};

}  // namespace

TEST(MelodyScore, SendsWhatThePlayerSends) {
    for (const int tempo : {20, 59, 60, 70, 121, 133, 250}) {
        TestWorld world;
        world.openOutput();
        const Composition composition = compositionOf(varied(), tempo);
        NoView view;
        MelodyPlayer player(world.runtime, world.funzioniMM, composition, view);
        world.funzioniMM.ProgramChange(40);
        player.play(0, static_cast<std::int16_t>(composition.melody.EntryCount() - 1));

        const MelodyScore score = scoreOf(composition.melody, tempo, 40);
        EXPECT_THAT(linesOf(score), ElementsAreArray(world.midi.take())) << "tempo " << tempo;
        // The player says by its own state that it stopped at an entry too short to be played.
        EXPECT_EQ(score.entries < composition.melody.EntryCount(), player.playing());
    }
}

TEST(MelodyScore, EndsWithTheLastEntry) {
    // A rest at the end counts as well; each entry takes its total.
    const Composition composition = compositionOf({"60;62;00;", "1;1;2;", "n;s;p;"}, 120);
    EXPECT_EQ(scoreOf(composition.melody, 120, 0).endMs, 2000);
}

TEST(MidiFile, IsReadBackWithItsTimesNameAndTempo) {
    for (const int tempo : {20, 70, 133, 250}) {
        const MelodyScore score = scoreOf(compositionOf(varied(), tempo).melody, tempo, 40);
        MidiReader file(midi_file::write(score, tempo, QStringLiteral("Prova")));
        std::vector<std::string> events = file.events();
        ASSERT_GT(events.size(), 3U);
        EXPECT_THAT((std::vector{events[0], events[1]}),
                    ElementsAre("0.000 meta 3 Prova", "0.000 meta 81 "));
        EXPECT_EQ(events.back(), lineOf(static_cast<double>(score.endMs) / 1000, 0xC0, 0, 0)
                                     .replace(events.back().find(' ') + 1, 99, "meta 47 "));
        events.erase(events.begin(), events.begin() + 2);
        events.pop_back();
        EXPECT_THAT(events, ElementsAreArray(linesOf(score)));
        EXPECT_NEAR(60 / file.quarter, tempo, 0.3);
    }
}

TEST(MidiFile, KeepsItsMillisecondsAtTemposAndLengthsThatTheFormatCannotHold) {
    MelodyScore score;
    score.messages = {{0, 0x643C90}, {700'000'000, 0x3C90}};
    score.endMs = 700'000'030;
    for (const int tempo : {1, 200'000}) {
        MidiReader file(midi_file::write(score, tempo, {}));
        EXPECT_THAT(file.events(),
                    ElementsAre("0.000 meta 3 ", "0.000 meta 81 ", "0.000 on 1 60 100",
                                "268435.455 meta 1 ", "536870.910 meta 1 ", "700000.000 on 1 60 0",
                                "700000.030 meta 47 "));
    }
}
