#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

/// Figures of a set of measurements.
namespace figures {

using Clock = std::chrono::steady_clock;

inline double seconds(Clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

/// The value below which the given share of the measurements lies.
inline double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const auto index = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1));
    return values.empty() ? 0 : values[index];
}

/// Prints the median, the 99th percentile and the largest value.
inline void print(const char* what, const std::vector<double>& values, double unit,
                  const char* unitName) {
    std::printf("%-44s median %8.3f  p99 %8.3f  max %8.3f %s (n = %zu)\n", what,
                quantile(values, 0.5) / unit, quantile(values, 0.99) / unit,
                quantile(values, 1) / unit, unitName, values.size());
    std::fflush(stdout);
}

/// The processor time of this process so far, all threads, in seconds.
inline double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto of = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

/// The share of one core that the process used between construction and `share`.
class ProcessorShare {
public:
    double share() const {
        return (processorSeconds() - processor_) / seconds(Clock::now() - wall_);
    }

private:
    double processor_ = processorSeconds();
    Clock::time_point wall_ = Clock::now();
};

}  // namespace figures
