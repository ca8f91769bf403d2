#include "audio/wave.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <sndfile.h>

namespace {

constexpr qint64 kLargestFile = 10'000'000;
constexpr int kLongestSeconds = 10;
constexpr int kLowestRate = 1000;
constexpr int kHighestRate = 384'000;

using SoundFile = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

bool playable(const SF_INFO& info) {
    const int kind = info.format & SF_FORMAT_TYPEMASK;
    return (kind == SF_FORMAT_WAV || kind == SF_FORMAT_WAVEX) && info.channels >= 1 &&
           info.channels <= 2 && info.samplerate >= kLowestRate &&
           info.samplerate <= kHighestRate && info.frames > 0 &&
           info.frames <= sf_count_t{kLongestSeconds} * info.samplerate;
}

float sanitized(float sample) {
    return std::isfinite(sample) ? std::clamp(sample, -1.0F, 1.0F) : 0.0F;
}

/// A smooth curve through b and c (at t = 0 and 1) with the slopes that a and d suggest.
double interpolated(double a, double b, double c, double d, double t) {
    const double linear = (c - a) / 2;
    const double quadratic = a - 2.5 * b + 2 * c - d / 2;
    const double cubic = (d - a) / 2 + 1.5 * (b - c);
    return ((cubic * t + quadratic) * t + linear) * t + b;
}

}  // namespace

std::optional<Wave> readWave(const QString& path) {
    QFile file(path);
    // A pipe or a device could block for ever.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > kLargestFile)
        return std::nullopt;
    SF_INFO info{};
    const SoundFile sound(sf_open_fd(file.handle(), SFM_READ, &info, SF_FALSE), sf_close);
    if (!sound || !playable(info))
        return std::nullopt;
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> read(static_cast<std::size_t>(info.frames) * channels);
    const sf_count_t frames = sf_readf_float(sound.get(), read.data(), info.frames);
    if (frames <= 0)
        return std::nullopt;
    Wave wave;
    wave.rate = info.samplerate;
    wave.samples.reserve(static_cast<std::size_t>(frames) * 2);
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames) * channels; i += channels) {
        wave.samples.push_back(sanitized(read[i]));
        wave.samples.push_back(sanitized(read[i + channels - 1]));
    }
    return wave;
}

Wave resampled(const Wave& wave, double rate) {
    if (wave.rate == rate)
        return wave;
    const auto last = static_cast<std::ptrdiff_t>(wave.frames()) - 1;
    const auto sample = [&](std::ptrdiff_t frame, std::size_t side) {
        const auto index = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(frame, 0, last));
        return static_cast<double>(wave.samples[2 * index + side]);
    };
    const double step = wave.rate / rate;
    const auto frames = static_cast<std::size_t>(static_cast<double>(wave.frames()) / step);
    Wave result;
    result.rate = rate;
    result.samples.reserve(frames * 2);
    for (std::size_t i = 0; i < frames; ++i) {
        const double at = static_cast<double>(i) * step;
        const auto frame = static_cast<std::ptrdiff_t>(at);
        const double t = at - static_cast<double>(frame);
        for (const std::size_t side : {0u, 1u})
            result.samples.push_back(static_cast<float>(
                interpolated(sample(frame - 1, side), sample(frame, side), sample(frame + 1, side),
                             sample(frame + 2, side), t)));
    }
    return result;
}

Wave defaultSound(double rate) {
    struct Partial {
        double frequency;
        double level;
        double decaySeconds;
    };
    constexpr std::array kPartials{Partial{880.0, 0.22, 0.22}, Partial{1760.0, 0.09, 0.13},
                                   Partial{2637.0, 0.05, 0.07}};
    constexpr double kSeconds = 0.9;
    constexpr double kAttackSeconds = 0.004;
    constexpr double kFadeSeconds = 0.05;

    Wave wave;
    wave.rate = rate;
    const auto frames = static_cast<std::size_t>(kSeconds * rate);
    for (std::size_t i = 0; i < frames; ++i) {
        const double time = static_cast<double>(i) / rate;
        double sample = 0;
        for (const Partial& partial : kPartials)
            sample += partial.level * std::exp(-time / partial.decaySeconds) *
                      std::sin(2 * std::numbers::pi * partial.frequency * time);
        sample *= std::min({1.0, time / kAttackSeconds, (kSeconds - time) / kFadeSeconds});
        wave.samples.insert(wave.samples.end(), 2, static_cast<float>(sample));
    }
    return wave;
}
