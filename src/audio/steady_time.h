#pragma once

#include <chrono>
#include <cstdint>

/// Nanoseconds of the steady clock.
inline std::int64_t steadyNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
