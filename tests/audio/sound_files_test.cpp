#include "audio/sound_file_bytes.h"
#include "audio/tune.h"
#include "audio/wave.h"

#include <QDir>
#include <QTemporaryFile>

#include <gmock/gmock.h>

#include <cmath>

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

TEST(WaveFile, IsReadAsStereoAsFarAsItGoesOrRefused) {
    const QByteArray half = bytes::number(0x4000, 2);
    const QByteArray wild = bytes::number(0x7FC00000, 4) + bytes::number(0x40000000, 4);
    const std::pair<QByteArray, std::vector<float>> files[] = {
        {bytes::wave(1, 2, 16, half + QByteArray(2, 0) + half), {0.5F, 0}},
        {bytes::wave(1, 1, 16, half), {0.5F, 0.5F}},
        {bytes::wave(1, 1, 16, half + half).chopped(2), {0.5F, 0.5F}},
        {bytes::wave(3, 2, 32, wild), {0, 1}},
    };
    for (const auto& [file, samples] : files)
        EXPECT_EQ(waveOf(file).value().samples, samples) << file.toHex().constData();
    EXPECT_EQ(waveOf(files[0].first)->rate, 8000);
    const QByteArray data(16, '\1');
    EXPECT_TRUE(waveOf(bytes::wave(1, 1, 8, QByteArray(80'000, 0))));
    for (const QByteArray& file :
         {bytes::wave(1, 0, 16, data), bytes::wave(1, 6, 16, data), bytes::wave(1, 1, 16, data, 0),
          bytes::wave(1, 1, 8, QByteArray(80'001, 0)),
          bytes::wave(1, 2, 32, QByteArray(10'000'000, 0), 384'000), QByteArray("RIFF")})
        EXPECT_FALSE(waveOf(file)) << file.left(60).toHex().constData();
    EXPECT_FALSE(readWave(QDir::tempPath()));
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
    const QByteArray tracks =
        bytes::track(QByteArray::fromHex(
            "00903C64 8360FF510303D090 00F0027EF7 8360903E64 003E00 00E07F40 00FF2F00")) +
        bytes::track(QByteArray::fromHex("8170C110 00B10764 00FF2F00"));
    const auto tune = Tune::start(bytes::midi(1, 480, tracks, 2));
    ASSERT_TRUE(tune);
    EXPECT_THAT(played(*tune, 5000),
                testing::ElementsAre(Due{0, 0x643C90}, Due{250, 0x10C1}, Due{250, 0x6407B1},
                                     Due{750, 0x643E90}, Due{750, 0x003E90}, Due{750, 0x407FE0}));
    EXPECT_TRUE(tune->over());
    for (const QByteArray& file : {QByteArray(), QByteArray("not a MIDI file"),
                                   bytes::midi(0, 96, {}), bytes::midi(0, 0xE728, tracks)})
        EXPECT_FALSE(Tune::start(file)) << file.toHex().constData();
}
