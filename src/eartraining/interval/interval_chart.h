#pragma once

#include "core/intervals.h"

#include <array>

/// The chart of intervals: a column for each number of semitones, with the names that the interval
/// goes by above and below its button.
namespace interval_chart {

constexpr int kIntervals = intervals::kLargest + 1;  ///< 0..13 semitones

enum class Row { Above, Below };

struct Name {
    intervals::Interval interval;
    Row row;
};

/// In the order of the labels.
extern const std::array<Name, intervals::kAll.size()> kNames;

constexpr bool isInterval(int semitones) {
    return semitones >= 0 && semitones < kIntervals;
}

/// Whether one of the interval's names is a consonance.
bool isConsonant(int semitones);

}  // namespace interval_chart
