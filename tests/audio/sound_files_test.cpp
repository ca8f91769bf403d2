#include "audio/sound_file_bytes.h"
#include "audio/tune.h"
#include "audio/wave.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <ranges>

namespace {

struct Due {
    int ms;
    std::uint32_t message;
    bool operator==(const Due&) const = default;
};

std::vector<Due> played(Tune& tune, int untilMs) {
    std::vector<Due> all;
    for (int ms = 1; ms <= untilMs && !tune.over(); ++ms) {
        for (const std::uint32_t message : tune.messagesUntil(ms / 1000.0))
            all.push_back({ms - 1, message});
    }
    return all;
}

std::optional<Wave> waveOf(const QByteArray& bytes) {
    QTemporaryFile file;
    EXPECT_TRUE(file.open() && file.write(bytes) == bytes.size() && file.flush());
    return readWave(file.fileName());
}

}  // namespace

TEST(WaveFile, MonoAndStereoAreReadAndWhatEndsEarlyGivesWhatItHolds) {
    const QByteArray half = bytes::number(0x4000, 2);
    const auto stereo = waveOf(bytes::wave(1, 2, 16, half + QByteArray(2, 0) + half));
    ASSERT_TRUE(stereo);
    EXPECT_EQ(stereo->rate, 8000);
    EXPECT_EQ(stereo->samples, (std::vector<float>{0.5F, 0.0F}));  // the half frame is left out
    EXPECT_EQ(waveOf(bytes::wave(1, 1, 16, half))->samples, (std::vector<float>{0.5F, 0.5F}));
    EXPECT_EQ(waveOf(bytes::wave(1, 1, 16, half + half).chopped(2))->frames(), 1U);
    const QByteArray wild = bytes::number(0x7FC00000, 4) + bytes::number(0x40000000, 4);
    EXPECT_EQ(waveOf(bytes::wave(3, 2, 32, wild))->samples, (std::vector<float>{0.0F, 1.0F}));
}

TEST(WaveFile, RefusesWhatItCannotPlayAndWhatIsTooLong) {
    const QByteArray data(16, '\1');
    EXPECT_TRUE(waveOf(bytes::wave(1, 1, 8, QByteArray(80'000, 0))));
    for (const QByteArray& file :
         {bytes::wave(1, 0, 16, data), bytes::wave(1, 6, 16, data), bytes::wave(1, 1, 16, data, 0),
          bytes::wave(1, 1, 16, {}), bytes::wave(1, 1, 8, QByteArray(80'001, 0)),
          bytes::wave(1, 2, 32, QByteArray(10'000'000, 0), 384'000), QByteArray("RIFF")})
        EXPECT_FALSE(waveOf(file)) << file.left(60).toHex().constData();
    EXPECT_FALSE(readWave(QDir::tempPath()));
}

TEST(NoteFolder, AnswersStartAtOnceAndAreShortAndUnclipped) {
    for (const char* name : {"rok.wav", "rko.wav"}) {
        SCOPED_TRACE(name);
        const auto wave = readWave(QStringLiteral(NOTE_FOLDER) + QLatin1String(name));
        ASSERT_TRUE(wave);
        const auto loudness = [](float sample) { return std::abs(sample); };
        const auto& samples = wave->samples;
        const float peak = std::ranges::max(samples | std::views::transform(loudness));
        EXPECT_GT(peak, 0.25F);
        EXPECT_LT(peak, 0.8F) << "where the mixer begins to limit";
        const auto start = std::ranges::find_if(
            samples, [peak](float sample) { return sample > peak / 10; }, loudness);
        EXPECT_LT(static_cast<double>(start - samples.begin()) / 2, 0.005 * wave->rate);
        EXPECT_LT(static_cast<double>(wave->frames()), 1.5 * wave->rate);
    }
}

TEST(NoteFolder, TuneEndsBeforeItIsClosed) {
    QFile file(QStringLiteral(NOTE_FOLDER "ap.mid"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto tune = Tune::start(file.readAll());
    ASSERT_TRUE(tune);
    const std::vector<Due> messages = played(*tune, 5000);
    EXPECT_TRUE(tune->over());
    EXPECT_GT(messages.size(), 20U);
    EXPECT_GT(messages.back().ms, 1500);
    EXPECT_LT(messages.back().ms, 2000) << "the last note rings on";
}

TEST(WaveFile, ResamplingKeepsLengthAndShape) {
    Wave wave{8000, {}};
    const auto sine = [](double time) { return std::sin(2 * 3.14159265358979 * 300 * time); };
    for (int i = 0; i < 800; ++i)
        wave.samples.insert(wave.samples.end(), 2, static_cast<float>(sine(i / 8000.0)));
    const Wave result = resampled(wave, 44100);
    ASSERT_EQ(result.frames(), 4410u);
    for (std::size_t i = 10; i < 4390; ++i)
        EXPECT_NEAR(result.samples[2 * i], sine(static_cast<double>(i) / 44100), 0.01) << i;
}

TEST(Tune, TimesFollowTempoRunningStatusAndTracks) {
    // At 480 ticks a quarter: a note, the tempo doubled after a quarter, a system-exclusive message
    // in between, a second note after another quarter under running status, a bend.
    const QByteArray first =
        bytes::track(QByteArray::fromHex("00903C64"
                                         "8360FF510303D090"
                                         "00F0027EF7"
                                         "8360903E64"
                                         "003E00"
                                         "00E07F40"
                                         "00FF2F00"));
    const QByteArray second =
        bytes::track(QByteArray::fromHex("8170C110"
                                         "00B1076400FF2F00"));
    const QByteArray file = bytes::midi(1, 480, first + second, 2);
    const auto tune = Tune::start(file);
    ASSERT_TRUE(tune);
    EXPECT_EQ(played(*tune, 5000), (std::vector<Due>{{0, 0x643C90},
                                                     {250, 0x10C1},
                                                     {250, 0x6407B1},
                                                     {750, 0x643E90},
                                                     {750, 0x003E90},
                                                     {750, 0x407FE0}}));
    EXPECT_TRUE(tune->over());
}

TEST(Tune, WhatIsBrokenIsRefusedOrPlayedAsFarAsItGoes) {
    const QByteArray notes = bytes::track(QByteArray::fromHex("00903C6460903E6400FF2F00"));
    for (const QByteArray& file : {QByteArray(), QByteArray("not a MIDI file"),
                                   bytes::midi(0, 96, {}), bytes::midi(0, 0xE728, notes)})
        EXPECT_FALSE(Tune::start(file)) << file.toHex().constData();
    std::mt19937 random(1);
    const QByteArray whole = bytes::midi(0, 96, notes);
    for (int i = 0; i < 1000; ++i) {
        QByteArray broken = whole.first(static_cast<qsizetype>(random() % whole.size()) + 1);
        broken[static_cast<qsizetype>(random() % broken.size())] = static_cast<char>(random());
        if (const auto tune = Tune::start(broken))
            played(*tune, 100);
    }
}
