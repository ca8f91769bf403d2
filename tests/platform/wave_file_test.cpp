// The wave file, rendered by the real synthesizer where its instruments are installed.

#include "audio/wave.h"
#include "composer/export/melody_score.h"
#include "composer/export/wave_file_writer.h"
#include "platform/desktop/desktop_folders.h"
#include "platform/sound.h"
#include "platform/wave_renderer.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

constexpr std::uint32_t kNoteOn = 0x90;
constexpr int kRate = WaveRenderer::kFramesPerSecond;
constexpr qsizetype kHeader = 44;

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

MelodyScore aNoteAt(std::int64_t ms, std::uint32_t note) {
    MelodyScore score;
    score.messages = {
        {0, 0xC0}, {ms, kNoteOn | note << 8 | 100 << 16}, {ms + 1000, kNoteOn | note << 8}};
    score.endMs = ms + 1030;
    return score;
}

double leftAt(const Wave& wave, int frame) {
    return wave.samples[2 * static_cast<std::size_t>(frame)];
}

/// How much of a frequency there is in a stretch of the left side.
double strength(const Wave& wave, int from, int frames, double frequency) {
    double cosine = 0;
    double sine = 0;
    for (int i = 0; i < frames; ++i) {
        const double angle = 2 * std::numbers::pi * frequency * i / kRate;
        cosine += leftAt(wave, from + i) * std::cos(angle);
        sine += leftAt(wave, from + i) * std::sin(angle);
    }
    return std::hypot(cosine, sine) / frames;
}

}  // namespace

TEST_F(WaveFileTest, ANoteSoundsInItsTimeAtItsPitchAndDiesAway) {
    double lastShare = 0;
    const auto result = write(aNoteAt(500, 69), [&lastShare](double share) {
        EXPECT_GE(share, lastShare);
        return (lastShare = share) <= 1;
    });
    if (result == wave_file::Result::NoInstruments)
        GTEST_SKIP() << "no soundfont on this machine";
    ASSERT_EQ(result, wave_file::Result::Written);
    EXPECT_EQ(lastShare, 1);

    const auto wave = readWave(path);
    ASSERT_TRUE(wave);
    EXPECT_EQ(wave->rate, kRate);
    const auto frames = static_cast<int>(wave->frames());
    EXPECT_EQ(file().size(), kHeader + qsizetype{4} * frames) << "16 bits, stereo, to the end";

    int first = 0;
    while (first < frames && std::abs(leftAt(*wave, first)) < 1e-3)
        ++first;
    EXPECT_NEAR(first, kRate / 2, kRate / 100) << "the attack of the instrument aside";
    const double itself = strength(*wave, first + kRate / 10, kRate / 2, 440);
    EXPECT_GT(itself, 5e-3);
    for (const double other : {415.3, 466.2, 220.0, 330.0})
        EXPECT_GT(itself, 10 * strength(*wave, first + kRate / 10, kRate / 2, other)) << other;
    EXPECT_GT(frames, kRate * 3 / 2 + kRate / 10) << "the echo is there";
    for (int frame = frames - kRate / 10; frame < frames; ++frame)
        EXPECT_NEAR(leftAt(*wave, frame), 0, 1e-4);
}

TEST_F(WaveFileTest, WhatIsGivenUpOrTooLongLeavesTheOldFileAndNothingElse) {
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    int shown = 0;
    const auto result = write(aNoteAt(0, 60), [&shown](double) { return ++shown < 3; });
    if (result == wave_file::Result::NoInstruments)
        GTEST_SKIP() << "no soundfont on this machine";
    EXPECT_EQ(result, wave_file::Result::Interrupted);
    EXPECT_EQ(write(aNoteAt(24'348'000, 60), nullptr), wave_file::Result::TooLong);
    qputenv("CANTAVISTA_SOUNDFONT", path.toUtf8());
    EXPECT_EQ(write(aNoteAt(0, 60), nullptr), wave_file::Result::DamagedInstruments);
    qputenv("CANTAVISTA_SOUNDFONT", path.toUtf8() + "-missing");
    EXPECT_EQ(write(aNoteAt(0, 60), nullptr), wave_file::Result::NoInstruments);
    qunsetenv("CANTAVISTA_SOUNDFONT");
    EXPECT_EQ(file(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}
