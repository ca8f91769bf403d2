#include "metronome/tap_tempo.h"

namespace {

constexpr double kMinute = 60000;  ///< in milliseconds

}  // namespace

std::optional<double> TapTempo::tap(Time at) {
    const Time distance = taps_.empty() ? Time{} : at - taps_.back();
    if (distance <= Time{} || distance > kPause) {
        taps_.clear();
    } else if (taps_.size() > 1) {
        const double ratio = static_cast<double>(distance.count()) / averageDistance();
        if (ratio > kTolerance)
            taps_.clear();
        else if (ratio < 1 / kTolerance)
            taps_.erase(taps_.begin(), taps_.end() - 1);
    }
    if (taps_.size() == kTaps)
        taps_.erase(taps_.begin());
    taps_.push_back(at);
    if (taps_.size() == 1)
        return std::nullopt;
    return kMinute / averageDistance();
}

/// In milliseconds, of at least two taps.
double TapTempo::averageDistance() const {
    return static_cast<double>((taps_.back() - taps_.front()).count()) /
           static_cast<double>(taps_.size() - 1);
}
