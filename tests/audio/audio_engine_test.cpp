#include "audio/audio_engine.h"

#include "audio/sound_file_bytes.h"
#include "audio/tune.h"
#include "audio/wave.h"
#include "platform/linux/soundfont.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace {

constexpr double kRate = 44100;
constexpr int kPeriod = 250;  // no multiple of the synthesizer's block

/// Renders the engine's stream without a device, on a clock of its own.
struct AudioEngineTest : testing::Test {
    AudioEngineTest() {
        engine_.setSynthesizer(Synthesizer::load(findSoundfont(), kRate));
        render(0.5);
    }

    std::vector<float> render(double seconds) {
        std::vector<float> heard;
        while (static_cast<double>(heard.size()) < seconds * kRate) {
            float left[kPeriod];
            float right[kPeriod];
            engine_.render(left, right, kPeriod, now());
            frames_ += kPeriod;
            heard.insert(heard.end(), left, left + kPeriod);
        }
        return heard;
    }

    std::int64_t now() const {
        return static_cast<std::int64_t>((10 + static_cast<double>(frames_) / kRate) * 1e9);
    }

    AudioEngine engine_{kRate};
    std::int64_t frames_ = 0;
};

double peak(const std::vector<float>& sound) {
    const auto [low, high] = std::ranges::minmax(sound);
    return std::max(-low, high);
}

double strengthAt(const std::vector<float>& sound, double frequency) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < sound.size(); ++i)
        sum += static_cast<double>(sound[i]) *
               std::polar(1.0, -2 * std::numbers::pi * frequency * static_cast<double>(i) / kRate);
    return std::abs(sum) / static_cast<double>(sound.size());
}

}  // namespace

TEST_F(AudioEngineTest, PlaysTheNoteAndResetKeepsTheProgram) {
    for (const std::uint32_t message : {0x10C0U, 0x000007B0U, 0xFFU, 0xF0U, 0U, 0x644590U})
        EXPECT_TRUE(engine_.message(message, now()));
    const auto organ = render(1);
    EXPECT_GT(strengthAt(organ, 440), 0.005);
    EXPECT_GT(strengthAt(organ, 440), 5 * strengthAt(organ, 466.2));

    engine_.reset(now());
    render(1.5);
    EXPECT_LT(peak(render(0.5)), 1e-4);

    // An organ sounds on where a piano, the program of a fresh channel, dies away.
    engine_.message(0x644590, now());
    const auto start = render(1);
    render(4);
    EXPECT_GT(peak(render(0.5)), 0.5 * peak(start));
}

TEST_F(AudioEngineTest, ATuneIsCutAtOnceAndLeavesTheOutputAlone) {
    const QByteArray track = bytes::track(QByteArray::fromHex("00C010 00903C7F 60903E7F"));
    engine_.startTune(Tune::start(bytes::midi(0, 96, track)), now());
    EXPECT_GT(peak(render(0.8)), 0.05);
    engine_.reset(now());  // of the MIDI output
    EXPECT_GT(peak(render(0.5)), 0.05);
    engine_.message(0x644590, now());
    engine_.stopTune(now());
    render(0.1);
    const auto rest = render(1);
    EXPECT_GT(strengthAt(rest, 440), 0.005);
    EXPECT_LT(strengthAt(rest, 261.6), 0.0005);
}

TEST_F(AudioEngineTest, AWaveReplacesTheOneBeforeAndEnds) {
    const auto constant = [](float level, std::size_t size) {
        return std::make_shared<const Wave>(Wave{kRate, std::vector<float>(size, level)});
    };
    auto wave = constant(0.25F, 88200);
    const std::weak_ptr<const Wave> first = wave;
    engine_.startWave(std::move(wave), now());
    EXPECT_FLOAT_EQ(static_cast<float>(peak(render(0.2))), 0.25F);
    engine_.startWave(constant(0.125F, 2000), now());
    render(0.015);
    EXPECT_LE(peak(render(0.2)), 0.125);
    EXPECT_LT(peak(render(0.2)), 1e-6);
    for (int i = 0; i < 2; ++i, render(0.1))
        engine_.reset(now());
    EXPECT_TRUE(first.expired());
}

TEST_F(AudioEngineTest, IsIdleOnlyWhenAllIsSilentAndDone) {
    EXPECT_FALSE(engine_.isIdle());
    render(3.5);
    EXPECT_TRUE(engine_.isIdle());
    engine_.message(0x644590, now());
    EXPECT_FALSE(engine_.isIdle());
    engine_.waitForPost();  // returns, as there is something to do
}
