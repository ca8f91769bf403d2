#include "composer/export/melody_score.h"

#include "composer/export/midi_file_writer.h"
#include "composer/export/wave_file_writer.h"
#include "composer/player_model.h"
#include "support/memory_folders.h"

#include <gmock/gmock.h>

namespace {

/// A message as `MidiRecorder` writes it.
std::string lineOf(std::int64_t ms, std::uint32_t message) {
    if (message % 256 == 0xC0)
        return at(ms, "program " + std::to_string(message / 256));
    return at(ms, "on " + std::to_string(message % 256 - 0x8F) + ' ' +
                      std::to_string(message / 256 % 256) + ' ' + std::to_string(message / 65536));
}

/// Reads a MIDI file by its own tempo and division; a meta event as "0.000 meta 3 Nome".
struct MidiReader {
    QByteArray bytes;
    qsizetype place = 14;
    double quarter = 0.5;  ///< seconds

    std::uint32_t number(int size) {
        std::uint32_t value = 0;
        while (size-- > 0)
            value = value << 8 | static_cast<unsigned char>(bytes.at(place++));
        return value;
    }
    std::int64_t variable() {
        std::int64_t value = 0;
        std::uint32_t byte = 0x80;
        while (byte >= 0x80) {
            byte = number(1);
            value = value * 128 + byte % 128;
        }
        return value;
    }
    Lines events() {
        EXPECT_EQ(bytes.left(12), QByteArray("MThd\0\0\0\6\0\0\0\1", 12));
        place = 12;
        const auto division = static_cast<double>(number(2));
        EXPECT_EQ(bytes.mid(place, 4), "MTrk");
        place += 4;
        const auto length = qsizetype{number(4)};
        EXPECT_EQ(length, bytes.size() - place);
        double ms = 0;
        Lines lines;
        while (place < bytes.size()) {
            ms += static_cast<double>(variable()) * quarter * 1000 / division;
            const auto time = static_cast<std::int64_t>(ms + 0.5);
            const std::uint32_t status = number(1);
            if (status != 0xFF) {
                const std::uint32_t data = number(1);
                lines.push_back(
                    lineOf(time, status | data << 8 | (status == 0xC0 ? 0 : number(1)) << 16));
                continue;
            }
            const std::uint32_t kind = number(1);
            const std::int64_t size = variable();
            if (kind == 0x51)
                quarter = number(3) * 1e-6;
            const QByteArray content = kind == 0x51 ? QByteArray() : bytes.mid(place, size);
            place += content.size();
            lines.push_back(at(time, "meta " + std::to_string(kind) + ' ' + content.toStdString()));
        }
        return lines;
    }
};

/// Three stretches of 441 frames.
struct FakeRenderer : WaveRenderer {
    struct Rendering : WaveRendering {
        int left = 3;
        Frames frames;
        const Frames& next() override {
            frames.assign(left-- > 0 ? 882 : 0, 0x0201);
            return frames;
        }
    };
    bool damaged = false;

    std::unique_ptr<WaveRendering> start(std::vector<TimedMessage>, std::int64_t) override {
        return damaged ? nullptr : std::make_unique<Rendering>();
    }
    bool instrumentsDamaged() const override { return damaged; }
};

}  // namespace

TEST(MelodyScore, IsWhatThePlayerSendsAlsoInAMidiFile) {
    std::mt19937 random(5);
    for (int i = 0; i < 400; ++i) {
        PlayerModel player;
        const int tempo = 20 + static_cast<int>(random() % 231);
        player.load(anyEntries(random), 0, 99);
        player.setTempo(tempo);
        player.clickPlay();
        Melody melody;
        MelodyDelta delta{0, 0, player.entries, true, {}};
        melody.exchange(delta);
        const MelodyScore score = scoreOf(melody, tempo, 40);
        Lines lines{"0.000 program 40"};
        lines.insert(lines.end(), player.midi.begin(), player.midi.end());
        Lines scored;
        for (const auto& [ms, message] : score.messages)
            scored.push_back(lineOf(ms, message));
        ASSERT_EQ(scored, lines);
        ASSERT_EQ(score.entries == melody.EntryCount(), !player.playing);
        ASSERT_EQ(score.endMs, player.now + (player.playing ? 0 : 30));
        MidiReader file{midi_file::write(score, tempo, QStringLiteral("Perché"))};
        lines.insert(lines.begin(), {"0.000 meta 3 Perché", "0.000 meta 81 "});
        lines.push_back(at(score.endMs, "meta 47 "));
        ASSERT_EQ(file.events(), lines);
        ASSERT_NEAR(file.quarter * 1000, 60'000.0 / tempo, 0.51);
    }
}

TEST(MidiFile, KeepsItsMillisecondsAtTemposAndLengthsThatTheFormatCannotHold) {
    MelodyScore score;
    score.messages = {{0, 0x643C90}, {700'000'000, 0x3C90}};
    score.endMs = 700'000'030;
    for (const int tempo : {1, 200'000}) {
        MidiReader file{midi_file::write(score, tempo, {})};
        EXPECT_EQ(file.events(), (Lines{"0.000 meta 3 ", "0.000 meta 81 ", "0.000 on 1 60 100",
                                        "268435.455 meta 1 ", "536870.910 meta 1 ",
                                        "700000.000 on 1 60 0", "700000.030 meta 47 "}));
    }
}

TEST(WaveFile, SaysItsLengthAndStandsThereWholeOrNotAtAll) {
    using wave_file::Result;
    const QString path = QStringLiteral("C:\\Cantavista\\a.wav");
    MemoryFolders folders;
    FakeRenderer renderer;
    MelodyScore score;
    score.endMs = 20;
    std::vector<double> shares;
    const auto write = [&](std::size_t atMost) {
        shares.clear();
        const auto progress = [&](double share) {
            shares.push_back(share);
            return shares.size() < atMost;
        };
        return wave_file::write(renderer, score, folders, path, progress).result;
    };
    EXPECT_EQ(write(2), Result::Interrupted);
    folders.writeFailure = {61, {}};
    EXPECT_EQ(write(9), Result::Failed);
    EXPECT_FALSE(folders.fileExists(path));
    folders.writeFailure = {};
    EXPECT_EQ(write(9), Result::Written);
    EXPECT_EQ(shares, (std::vector{0.5, 1.0, 1.0}));
    // 1323 frames of PCM: sizes, two channels, rate, bytes a second, bytes a frame, bits.
    EXPECT_EQ(folders.at(path).left(44).toHex(),
              "52494646d014000057415645666d7420100000000100020044ac0000"
              "10b102000400100064617461ac140000");
    EXPECT_EQ(folders.at(path).mid(44), QByteArray("\1\2").repeated(2 * 1323));
    renderer.damaged = true;
    EXPECT_EQ(write(9), Result::DamagedInstruments);
    // Four gigabytes, with the longest echo.
    score.endMs = 24'337'886;
    EXPECT_EQ(write(9), Result::DamagedInstruments);
    ++score.endMs;
    EXPECT_EQ(write(9), Result::TooLong);
}
