// The wave file of the real synthesizer, against what the mixer plays.

#include "audio/sound_mixer.h"
#include "composer/export/melody_score.h"
#include "composer/export/wave_file_writer.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/linux/soundfont.h"
#include "platform/sound.h"
#include "platform/wave_renderer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

struct WaveFileTest : testing::Test {
    QTemporaryDir folder;
    DesktopFolders folders{DesktopFolders::ProgramFolder::Unused};
    std::unique_ptr<Sound> sound = openSound(folders);
    QString path = folder.filePath("suono.wav");

    wave_file::Result write(const MelodyScore& score, const wave_file::Progress& progress) {
        return wave_file::write(*sound->waveRenderer(), score, folders, path, progress).result;
    }

    QByteArray file() const {
        QFile wave(path);
        return wave.open(QIODevice::ReadOnly) ? wave.readAll() : QByteArray();
    }
};

/// Random notes, which in the end are ended or go on.
MelodyScore someNotes(bool ended) {
    std::mt19937 random(4);
    MelodyScore score;
    for (std::int64_t ms = 0; ms < 1500; ms += random() % 60) {
        const auto draw = static_cast<std::uint32_t>(random());
        const std::uint32_t note = 0x90 | (40 + draw % 50) << 8 | draw / 64 % 128 << 16;
        score.messages.push_back({ms, draw >> 29 ? note : 0xC0 | draw % 40 << 8});
    }
    for (std::uint32_t note = 40; ended && note < 90; ++note)
        score.messages.push_back({1600, 0x90 | note << 8});
    score.endMs = 1930;
    return score;
}

/// The same, block by block: each message at the beginning of the block that is closest to it, and
/// the end when nothing sounds any more, or ten seconds late.
std::vector<int> played(const MelodyScore& score) {
    SoundMixer mixer(44100);
    mixer.setSynthesizer(Synthesizer::load(findSoundfont(), 44100));
    std::vector<int> samples;
    std::size_t sent = 0;
    for (std::int64_t block = 0, end = score.endMs * 441 / 10;
         block * 64 < end || (mixer.silentFrames() == 0 && block * 64 < end + 441'000); ++block) {
        for (; sent < score.messages.size() &&
               (score.messages[sent].ms * 441 / 10 + 32) / 64 <= block;
             ++sent) {
            SoundEvent event;
            event.message = score.messages[sent].message;
            mixer.apply(event);
        }
        SoundMixer::Side left;
        SoundMixer::Side right;
        mixer.render(left, right);
        for (std::size_t i = 0; i < left.size(); ++i)
            for (const float sample : {left[i], right[i]})
                samples.push_back(static_cast<int>(std::lround(sample * 32767)));
    }
    return samples;
}

}  // namespace

TEST_F(WaveFileTest, HoldsWhatTheMixerPlays) {
    for (const bool ended : {true, false}) {
        double lastShare = 0;
        ASSERT_EQ(write(someNotes(ended),
                        [&lastShare](double share) {
                            EXPECT_GE(share, lastShare);
                            return (lastShare = share) <= 1;
                        }),
                  wave_file::Result::Written);
        EXPECT_EQ(lastShare, 1);
        const QByteArray bytes = file();
        const auto number = [&bytes](qsizetype at) {
            return qFromLittleEndian<std::uint32_t>(bytes.constData() + at);
        };
        const std::vector<int> expected = played(someNotes(ended));
        ASSERT_EQ(bytes.size(), 44 + 2 * static_cast<qsizetype>(expected.size()));
        EXPECT_EQ(bytes.first(4) + bytes.mid(8, 8) + bytes.mid(36, 4), "RIFFWAVEfmt data");
        // Sizes; plain samples, two a frame; rate, bytes a second, bytes a frame and bits.
        for (const auto& [at, value] : {std::pair{4, bytes.size() - 8},
                                        {16, 16},
                                        {20, 1 | 2 << 16},
                                        {24, 44100},
                                        {28, 44100 * 4},
                                        {32, 4 | 16 << 16},
                                        {40, bytes.size() - 44}})
            EXPECT_EQ(number(at), value) << at;
        int most = 0;
        for (std::size_t i = 0; i < expected.size(); ++i)
            most = std::max(most, std::abs(expected[i] - qFromLittleEndian<std::int16_t>(
                                                             bytes.constData() + 44 + 2 * i)));
        EXPECT_LE(most, 1);
        EXPECT_GT(*std::max_element(expected.begin(), expected.end()), 1000);
    }
}

TEST_F(WaveFileTest, WhatIsGivenUpOrTooLongLeavesTheOldFileAndNothingElse) {
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    int shown = 0;
    EXPECT_EQ(write(someNotes(true), [&shown](double) { return ++shown < 3; }),
              wave_file::Result::Interrupted);
    MelodyScore longest = someNotes(true);
    longest.endMs = 24'348'000;
    EXPECT_EQ(write(longest, nullptr), wave_file::Result::TooLong);
    EXPECT_EQ(file(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}
