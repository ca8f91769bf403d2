#pragma once

#include <QByteArrayView>

#include <optional>
#include <vector>

/// Recorded sound in memory: left and right in turn, each -1..1.
struct Wave {
    double rate = 0;  ///< frames per second
    std::vector<float> samples;

    std::size_t frames() const { return samples.size() / 2; }
};

constexpr double kLongestWaveSeconds = 10;

/// Reads a RIFF wave file: mono or stereo, PCM of 8, 16, 24 or 32 bits, or floating point of 32
/// or 64. Nothing if it is anything else or longer than `kLongestWaveSeconds`. A file that ends too
/// early gives what it holds.
std::optional<Wave> readWave(QByteArrayView file);

/// The same sound at another rate.
Wave resampled(const Wave& wave, double rate);

/// The sound that stands in for a missing one: a short bell.
Wave defaultSound(double rate);
