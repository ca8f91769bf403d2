#include "core/blocking_wait.h"

#include "platform/runtime.h"

#include <cmath>
#include <limits>

namespace blocking_wait {

void wait(Runtime& runtime, double seconds) {
    if (!isWait(seconds))
        return;
    // The end is worked out on the clock as it reads now and then met on the steady clock, so that
    // neither midnight nor a changed system time can prolong a wait.
    const Instant begin = runtime.now();
    const double start = runtime.secondsSinceMidnight();
    runtime.blockUntil(begin + secondsToInstant(endOf(start, seconds) - start));
}

double endOf(double start, double seconds) {
    constexpr float kDown = -std::numeric_limits<float>::infinity();
    const auto target = static_cast<float>(start + seconds);
    const float below = std::nextafter(target, kDown);

    // Readings from half-way between the target and the number below it round to the target; the
    // half-way point itself rounds to the even one of the two.
    const double halfWay = (static_cast<double>(below) + static_cast<double>(target)) / 2;
    if (static_cast<float>(halfWay) >= target)
        return halfWay;
    return std::nextafter(halfWay, std::numeric_limits<double>::infinity());
}

}  // namespace blocking_wait
