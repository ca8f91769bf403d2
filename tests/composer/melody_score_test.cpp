#include "composer/export/melody_score.h"

#include "audio/sound_file_bytes.h"
#include "composer/any_melody.h"
#include "composer/export/midi_file_writer.h"
#include "composer/player_model.h"

#include <gtest/gtest.h>

namespace {

/// A message as `MidiRecorder` writes it.
std::string lineOf(std::int64_t ms, std::uint32_t message) {
    if (message % 256 == 0xC0)
        return at(ms, "program " + std::to_string(message / 256));
    return at(ms, "on " + std::to_string(message % 256 - 0x8F) + ' ' +
                      std::to_string(message / 256 % 256) + ' ' + std::to_string(message / 65536));
}

/// In groups of seven bits.
QByteArray variable(std::int64_t number, int topBit = 0) {
    const QByteArray last(1, static_cast<char>(number % 128 + topBit));
    return number < 128 ? last : variable(number / 128, 128) + last;
}

/// A MIDI file of one track, in which a tick takes a millisecond.
QByteArray midiFile(const MelodyScore& score, unsigned ticksOfAQuarter, const QByteArray& name) {
    constexpr std::int64_t kLongest = 0x0FFFFFFF;
    QByteArray track = QByteArray("\0\xFF\3", 3) + variable(name.size()) + name +
                       QByteArray("\0\xFF\x51\3", 4) +
                       bytes::number(1000 * ticksOfAQuarter, 3, false);
    std::int64_t now = 0;
    const auto wait = [&](std::int64_t until) {
        for (; until - now > kLongest; now += kLongest)
            track += QByteArray("\xFF\xFF\xFF\x7F\xFF\1\0", 7);
        track += variable(until - std::exchange(now, until));
    };
    for (const auto& [ms, message] : score.messages) {
        wait(ms);
        for (int i = 0; i < (message % 256 == 0xC0 ? 2 : 3); ++i)
            track += static_cast<char>(message >> 8 * i);
    }
    wait(score.endMs);
    track += QByteArray("\xFF\x2F\0", 3);
    return bytes::midi(0, ticksOfAQuarter, bytes::track(track));
}

}  // namespace

TEST(MelodyScore, IsWhatThePlayerSendsAlsoInAMidiFile) {
    std::mt19937 random(5);
    for (int i = 0; i < 400; ++i) {
        PlayerModel player;
        const int tempo = 20 + static_cast<int>(random() % 231);
        player.load(anyEntries(random), 0, 99);
        player.setTempo(tempo);
        player.clickPlay();
        const Melody melody = melodyOf(player.entries);
        const MelodyScore score = scoreOf(melody, tempo, 40);
        Lines lines{"0.000 program 40"};
        lines.insert(lines.end(), player.midi.begin(), player.midi.end());
        Lines scored;
        for (const auto& [ms, message] : score.messages)
            scored.push_back(lineOf(ms, message));
        ASSERT_EQ(scored, lines);
        ASSERT_EQ(score.entries == melody.EntryCount(), !player.playing);
        ASSERT_EQ(score.endMs, player.now + (player.playing ? 0 : 30));
        ASSERT_EQ(midi_file::write(score, tempo, QStringLiteral("Perché")),
                  midiFile(score, static_cast<unsigned>(60'000.0 / tempo + 0.5), "Perché"));
    }
    // What the format cannot hold.
    const MelodyScore score{{{0, 0x643C90}, {0x0FFFFFFF, 0x3C90}}, 700'000'030, 1};
    EXPECT_EQ(midi_file::write(score, 1, {}), midiFile(score, 16'777, {}));
    EXPECT_EQ(midi_file::write(score, 200'000, {}), midiFile(score, 1, {}));
}
