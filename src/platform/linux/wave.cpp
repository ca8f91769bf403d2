#include "platform/linux/wave.h"

#include "platform/linux/byte_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numbers>

namespace {

constexpr std::uint32_t kPcm = 1;
constexpr std::uint32_t kFloat = 3;
constexpr std::uint32_t kExtensible = 0xFFFE;
constexpr std::uint32_t kLowestRate = 1000;
constexpr std::uint32_t kHighestRate = 384'000;

struct Format {
    std::uint32_t encoding = 0;
    std::uint32_t channels = 0;
    std::uint32_t rate = 0;
    std::uint32_t bits = 0;

    int sampleBytes() const { return static_cast<int>(bits / 8); }

    bool playable() const {
        const bool pcm = encoding == kPcm && (bits == 8 || bits == 16 || bits == 24 || bits == 32);
        const bool floating = encoding == kFloat && (bits == 32 || bits == 64);
        return (pcm || floating) && (channels == 1 || channels == 2) && rate >= kLowestRate &&
               rate <= kHighestRate;
    }
};

std::optional<Format> readFormat(QByteArrayView chunk) {
    ByteReader reader(chunk);
    const auto encoding = reader.littleEndian(2);
    const auto channels = reader.littleEndian(2);
    const auto rate = reader.littleEndian(4);
    reader.take(6);  // bytes per second and per frame follow from the rest
    const auto bits = reader.littleEndian(2);
    if (!bits)
        return std::nullopt;
    Format format{*encoding, *channels, *rate, *bits};
    if (format.encoding == kExtensible) {
        reader.take(8);
        format.encoding = reader.littleEndian(2).value_or(0);
    }
    if (!format.playable())
        return std::nullopt;
    return format;
}

float sanitized(double sample) {
    return std::isfinite(sample) ? static_cast<float>(std::clamp(sample, -1.0, 1.0)) : 0.0F;
}

/// The caller has made sure that a whole sample is there.
float readSample(ByteReader& reader, const Format& format) {
    if (format.bits == 64) {
        const std::uint64_t low = *reader.littleEndian(4);
        const std::uint64_t high = *reader.littleEndian(4);
        return sanitized(std::bit_cast<double>(high << 32 | low));
    }
    const std::uint32_t raw = *reader.littleEndian(format.sampleBytes());
    if (format.encoding == kFloat)
        return sanitized(std::bit_cast<float>(raw));
    if (format.bits == 8)
        return (static_cast<float>(raw) - 128.0F) / 128.0F;
    const auto full = static_cast<std::int32_t>(raw << (32 - format.bits));
    return static_cast<float>(full / 2147483648.0);
}

std::optional<Wave> decode(const Format& format, QByteArrayView data) {
    const qsizetype frameBytes = static_cast<qsizetype>(format.channels) * format.sampleBytes();
    const qsizetype frames = data.size() / frameBytes;
    if (frames == 0 || static_cast<double>(frames) > kLongestWaveSeconds * format.rate)
        return std::nullopt;
    Wave wave;
    wave.rate = format.rate;
    wave.samples.reserve(static_cast<std::size_t>(frames) * 2);
    ByteReader reader(data);
    for (qsizetype i = 0; i < frames; ++i) {
        const float left = readSample(reader, format);
        const float right = format.channels == 2 ? readSample(reader, format) : left;
        wave.samples.push_back(left);
        wave.samples.push_back(right);
    }
    return wave;
}

/// A smooth curve through b and c (at t = 0 and 1) with the slopes that a and d suggest.
double interpolated(double a, double b, double c, double d, double t) {
    const double slope = (c - a) / 2;
    const double curve = a - 2.5 * b + 2 * c - d / 2;
    const double bend = (d - a) / 2 + 1.5 * (b - c);
    return ((bend * t + curve) * t + slope) * t + b;
}

}  // namespace

std::optional<Wave> readWave(QByteArrayView file) {
    ByteReader reader(file);
    if (reader.take(4) != QByteArrayView("RIFF"))
        return std::nullopt;
    reader.take(4);
    if (reader.take(4) != QByteArrayView("WAVE"))
        return std::nullopt;

    std::optional<Format> format;
    while (reader.left() >= 8) {
        const QByteArrayView name = reader.take(4);
        const std::uint32_t length = *reader.littleEndian(4);
        const QByteArrayView content = reader.take(length);
        if (name == QByteArrayView("fmt "))
            format = readFormat(content);
        else if (name == QByteArrayView("data"))
            return format ? decode(*format, content) : std::nullopt;
        reader.take(length & 1u);
    }
    return std::nullopt;
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
