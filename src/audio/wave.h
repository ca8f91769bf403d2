#pragma once

#include <QString>

#include <optional>
#include <vector>

/// Recorded sound in memory: left and right in turn, each -1..1.
struct Wave {
    double rate = 0;  ///< frames per second
    std::vector<float> samples;

    std::size_t frames() const { return samples.size() / 2; }
};

/// Reads a RIFF wave file, mono or stereo, in any encoding that libsndfile knows. Nothing if it is
/// anything else, or longer than 10 seconds or 10 MB. A file that ends too early gives what it
/// holds.
std::optional<Wave> readWave(const QString& path);

/// The same sound at another rate.
Wave resampled(const Wave& wave, double rate);

/// The sound that stands in for a missing one: a short bell.
Wave defaultSound(double rate);
