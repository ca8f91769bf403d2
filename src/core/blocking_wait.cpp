#include "core/blocking_wait.h"

#include <cmath>
#include <limits>

namespace blocking_wait {

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
