#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

/// What a recording of one channel of 16-bit frames tells: when sounds begin in it, and how well
/// that agrees with the instants at which they should have begun. All in seconds.
namespace heard {

constexpr double kRate = 44100;

/// The instants at which a sound begins after silence. An onset is the first frame of a share of
/// its own sound's peak, so that sounds of the same wave form are told to the frame (0.02 ms),
/// whatever their loudness. What comes less than `apart` after an onset belongs to the same sound,
/// which a dropout may have torn.
inline std::vector<double> onsets(const std::vector<std::int16_t>& frames, double apart = 0) {
    constexpr double kShare = 0.1;
    constexpr double kSilence = 0.015;
    constexpr auto kAttack = static_cast<std::size_t>(0.03 * kRate);
    const auto size = [&frames](std::size_t i) { return std::abs(static_cast<int>(frames[i])); };
    int peak = 0;
    for (std::size_t i = 0; i < frames.size(); ++i)
        peak = std::max(peak, size(i));
    // Below the softest sound of a melody, above the echo of a loud one.
    const int audible = std::max(static_cast<int>(kShare * peak / 2), 1);
    std::vector<double> found;
    std::size_t lastLoud = 0;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        if (size(i) < audible)
            continue;
        const bool silentBefore =
            found.empty() || static_cast<double>(i - lastLoud) > kSilence * kRate;
        lastLoud = i;
        if (silentBefore &&
            (found.empty() || static_cast<double>(i) / kRate - found.back() >= apart)) {
            int attack = 0;
            const std::size_t end = std::min(frames.size(), i + kAttack);
            for (std::size_t j = i; j < end; ++j)
                attack = std::max(attack, size(j));
            std::size_t onset = i;
            while (size(onset) < kShare * attack)
                ++onset;
            found.push_back(static_cast<double>(onset) / kRate);
        }
    }
    return found;
}

/// The gaps in a sound that should go on without any: stretches of perfect silence between its
/// beginning and its end.
inline std::vector<double> gaps(const std::vector<std::int16_t>& frames) {
    constexpr std::size_t kShortest = 32;
    std::vector<double> found;
    std::size_t zeros = 0;
    bool begun = false;
    for (const std::int16_t frame : frames) {
        if (frame == 0) {
            ++zeros;
            continue;
        }
        if (begun && zeros >= kShortest)
            found.push_back(static_cast<double>(zeros) / kRate);
        begun = true;
        zeros = 0;
    }
    return found;
}

struct Pair {
    double due;
    double heard;
};

/// Each due instant with the sound that belongs to it; one without a sound is left out. What is
/// lost or late does not shift what comes after it; another pace does, little by little.
inline std::vector<Pair> matched(const std::vector<double>& due,
                                 const std::vector<double>& sounds) {
    constexpr double kNear = 0.45;  // of the shortest distance of two instants
    constexpr double kFollowed = 0.1;
    std::vector<Pair> pairs;
    if (due.empty() || sounds.empty())
        return pairs;
    double shortest = 10;
    for (std::size_t i = 1; i < due.size(); ++i)
        shortest = std::min(shortest, due[i] - due[i - 1]);
    double shift = sounds.front() - due.front();
    std::size_t sound = 0;
    for (const double instant : due) {
        while (sound < sounds.size() && sounds[sound] < instant + shift - kNear * shortest)
            ++sound;
        if (sound == sounds.size())
            break;
        if (sounds[sound] - instant - shift > kNear * shortest)
            continue;
        shift += kFollowed * (sounds[sound] - instant - shift);
        pairs.push_back({instant, sounds[sound]});
        ++sound;
    }
    return pairs;
}

struct Line {
    double offset = 0;
    double slope = 1;
    double at(double x) const { return offset + slope * x; }
};

/// The straight line that fits best, by least squares.
inline Line fitted(const std::vector<Pair>& pairs) {
    double x = 0, y = 0, xx = 0, xy = 0;
    const auto n = static_cast<double>(pairs.size());
    for (const Pair& pair : pairs) {
        x += pair.due / n;
        y += pair.heard / n;
    }
    for (const Pair& pair : pairs) {
        xx += (pair.due - x) * (pair.due - x);
        xy += (pair.due - x) * (pair.heard - y);
    }
    const double slope = xx > 0 ? xy / xx : 1;
    return {y - slope * x, slope};
}

/// How far each sound is from the line.
inline std::vector<double> strays(const std::vector<Pair>& pairs, const Line& line) {
    std::vector<double> sizes;
    for (const Pair& pair : pairs)
        sizes.push_back(std::abs(pair.heard - line.at(pair.due)));
    return sizes;
}

inline double rootMeanSquare(const std::vector<double>& sizes) {
    double squares = 0;
    for (const double size : sizes)
        squares += size * size;
    return sizes.empty() ? 0 : std::sqrt(squares / static_cast<double>(sizes.size()));
}

/// The standard deviation from a fitted line, which took two degrees of freedom.
inline double deviation(const std::vector<double>& sizes) {
    const auto n = static_cast<double>(sizes.size());
    return n > 2 ? rootMeanSquare(sizes) * std::sqrt(n / (n - 2)) : 0;
}

}  // namespace heard
