#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>

/// A source of uniform random numbers in [0, 1), in single precision.
using Random = std::function<float()>;

/// A uniform draw between two bounds, both included: Int((upper - lower + 1) x r + lower), worked
/// out in single precision and rounded towards minus infinity. For the largest r the sum can round
/// up to upper + 1; the upper bound stands then, so that no note outside a range is ever drawn.
inline std::int16_t drawBetween(std::int16_t lower, std::int16_t upper, float r) {
    const float span = static_cast<float>(upper - lower + 1);
    const float scaled = span * r;
    const float drawn = std::floor(scaled + static_cast<float>(lower));
    return drawn > static_cast<float>(upper) ? upper : static_cast<std::int16_t>(drawn);
}

/// The program's one source of random numbers.
class RandomNumbers {
public:
    explicit RandomNumbers(Random source) : source_(std::move(source)) {}

    /// A uniform draw between two bounds, both included. Equal bounds draw a number too.
    std::int16_t between(std::int16_t lower, std::int16_t upper) {
        return drawBetween(lower, upper, source_());
    }

private:
    Random source_;
};
