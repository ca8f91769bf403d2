#include "core/wait_chain.h"

#include "core/blocking_wait.h"

#include <cmath>

namespace {

/// Below this the reading of a chain stays exact; beyond it the system's time was changed, or it is
/// a new day.
constexpr double kClockChanged = 0.05;

double seconds(Instant duration) {
    return std::chrono::duration<double>(duration).count();
}

}  // namespace

void WaitChain::restart() {
    reached_ = runtime_.now();
    clock_ = runtime_.secondsSinceMidnight();
}

void WaitChain::pass() {
    const Instant begun = runtime_.now();
    const bool input = runtime_.yield();
    const Instant handled = runtime_.now() - begun;
    if (input && handled > kHandlingTime)
        advance(handled);
}

/// To be called before a wait is added.
void WaitChain::compareWithClock() {
    if (delay() > kLongestDelay) {
        restart();
        return;
    }
    const double clock = runtime_.secondsSinceMidnight() - seconds(delay());
    if (std::abs(clock - clock_) > kClockChanged)
        clock_ = clock;
}

Instant WaitChain::afterSeconds(double seconds) {
    if (!blocking_wait::isWait(seconds))
        return reached_;
    compareWithClock();
    const double end = blocking_wait::endOf(clock_, seconds);
    reached_ += secondsToInstant(end - clock_);
    clock_ = end;
    return reached_;
}

Instant WaitChain::afterMs(std::int64_t ms) {
    compareWithClock();
    advance(std::chrono::milliseconds(ms));
    return reached_;
}

void WaitChain::advance(Instant duration) {
    reached_ += duration;
    clock_ += seconds(duration);
}
