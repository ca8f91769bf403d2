#pragma once

#include "eartraining/ear_colours.h"

#include <array>

/// The chart of intervals: a column for each number of semitones, with the names that the interval
/// goes by above and below its button.
namespace interval_chart {

constexpr int kIntervals = 14;  ///< 0..13 semitones

enum class Row { Above, Below };

struct Name {
    const char* text;
    int semitones;
    Row row;
    bool consonant;
};

/// In the order of the labels.
extern const std::array<Name, 25> kNames;

constexpr bool isInterval(int semitones) {
    return semitones >= 0 && semitones < kIntervals;
}

/// Whether one of the interval's names is a consonance.
bool isConsonant(int semitones);

}  // namespace interval_chart
