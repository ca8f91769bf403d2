#pragma once

#include <chrono>
#include <optional>
#include <vector>

/// Finds the tempo that a user taps: the average distance of the last taps. A tap that comes much
/// sooner or later than the taps before it begins a new tempo, and so does one after a pause.
class TapTempo {
public:
    using Time = std::chrono::milliseconds;

    /// So many taps are averaged.
    static constexpr std::size_t kTaps = 8;
    /// No two taps of a tempo lie further apart; a little more than at 20 beats per minute.
    static constexpr Time kPause{3300};
    /// So many times longer or shorter than the others a distance may be.
    static constexpr double kTolerance = 1.4;

    /// Takes a tap at a time of any clock; returns the taps per minute, from the second tap on.
    std::optional<double> tap(Time at);

private:
    double averageDistance() const;

    std::vector<Time> taps_;
};
