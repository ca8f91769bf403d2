#include "audio/dropouts.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double kNanoseconds = 1e9;
constexpr int kDropoutsAllowed = 2;
constexpr std::int64_t kForgotten = 30'000'000'000;
constexpr std::int64_t kSameDropout = 500'000'000;
/// A device plays by a clock of its own, which may be so much slower than the steady clock. A rate
/// above the device's would seem to empty the buffers bit by bit.
constexpr double kSlowestDevice = 0.99;

}  // namespace

bool BufferLevel::ranEmpty(std::int64_t now, int frames, int capacity, double rate) {
    const double played =
        static_cast<double>(now - std::exchange(last_, now)) / kNanoseconds * rate * kSlowestDevice;
    const bool empty = std::exchange(running_, true) && played > ahead_;
    ahead_ = empty ? 0 : std::max(ahead_ - played, 0.0);
    ahead_ = std::min(ahead_ + frames, static_cast<double>(capacity));
    return empty;
}

bool DropoutCount::callsForMore(std::int64_t now) {
    const std::int64_t since = now - std::exchange(last_, now);
    if (called_ || since < kSameDropout)
        return false;
    count_ = since > kForgotten ? 1 : count_ + 1;
    called_ = count_ == kDropoutsAllowed;
    return called_;
}
