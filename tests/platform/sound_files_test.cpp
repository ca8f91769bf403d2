#include "platform/linux/tune.h"
#include "platform/linux/wave.h"
#include "platform/sound_file_bytes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <ranges>

namespace {

/// Every beginning of the file, and the file with bytes changed at random: none may crash.
template <typename Reader>
void torture(const QByteArray& file, Reader read) {
    for (qsizetype size = 0; size < file.size(); ++size)
        read(file.first(size));
    std::mt19937 random(1);
    for (int i = 0; i < 3000; ++i) {
        QByteArray broken = file;
        for (int k = 0; k < 3; ++k)
            broken[static_cast<qsizetype>(random() % static_cast<unsigned>(file.size()))] =
                static_cast<char>(random());
        read(broken);
    }
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
    const auto tune = readTune(file.readAll());
    ASSERT_TRUE(tune);
    EXPECT_GT(tune->events.size(), 20U);
    EXPECT_GT(tune->events.back().seconds, 1.5);
    EXPECT_LT(tune->events.back().seconds, 2.0) << "the last note rings on until 2.2 s";
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

TEST(TuneFile, TimesFollowTempoRunningStatusAndTracks) {
    // At 96 ticks a quarter: a note, the tempo doubled after a quarter, a system-exclusive message
    // in between, a second note after another quarter under running status.
    const QByteArray first =
        bytes::track(QByteArray::fromHex("00903C64"
                                         "60FF510303D090"
                                         "00F0027EF7"
                                         "60903E64"
                                         "003E00"
                                         "00FF2F00"
                                         "00FFFF"));
    const QByteArray second = bytes::track(QByteArray::fromHex("30C110"));
    const auto tune = readTune(bytes::midi(1, 96, first + second));
    ASSERT_TRUE(tune);
    const auto& events = tune->events;
    ASSERT_EQ(events.size(), 4u);
    EXPECT_EQ(events[0].message, 0x643C90u);
    EXPECT_EQ(events[1].message, 0x10C1u);
    EXPECT_DOUBLE_EQ(events[1].seconds, 0.25);
    EXPECT_EQ(events[2].message, 0x643E90u);
    EXPECT_DOUBLE_EQ(events[2].seconds, 0.75);
    EXPECT_EQ(events[3].message, 0x003E90u);

    const auto film =
        readTune(bytes::midi(0, 0xE728, bytes::track(QByteArray::fromHex("64903C64"))));
    ASSERT_TRUE(film);
    EXPECT_NEAR(film->events[0].seconds, 0.1, 1e-12);  // 100 ticks at 25 frames of 40

    EXPECT_FALSE(readTune("not a MIDI file"));
    EXPECT_FALSE(readTune(bytes::midi(1, 96, {})));
    EXPECT_FALSE(readTune(bytes::midi(1, 0, first)));
    torture(bytes::midi(1, 96, first + second), [](const QByteArray& file) { readTune(file); });
}
