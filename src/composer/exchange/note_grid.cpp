#include "composer/exchange/note_grid.h"

#include "composer/score/written_value.h"

#include <algorithm>
#include <cmath>

namespace midi_recording {
namespace {

/// A dotted 64th note, and a triplet's, are multiples of these.
constexpr int kPlain = 3;
constexpr int kTriplet = 2;

constexpr double kMostOfUnit = 0.4;

}  // namespace

NoteGrid::NoteGrid(double ticksPerQuarter)
    : unitTicks_(ticksPerQuarter / score::kUnitsPerQuarter) {}

std::optional<int> NoteGrid::unitsOf(double ticks, double tooShort, double tooLong) const {
    return nearest(ticks, tooShort, tooLong,
                   [](int units) { return units % kPlain == 0 || units % kTriplet == 0; });
}

std::optional<int> NoteGrid::sumOf(double ticks, double tooShort, double tooLong) const {
    const std::optional<int> onGrid = unitsOf(ticks, tooShort, tooLong);
    return onGrid ? onGrid : nearest(ticks, tooShort, tooLong, [](int units) {
        return valuesFor(units) < kNoValues;
    });
}

std::optional<int> NoteGrid::nearest(double ticks, double tooShort, double tooLong,
                                     bool (*accepts)(int units)) const {
    const double first = std::ceil((ticks - tooLong) / unitTicks_);
    const double last = std::floor((ticks + tooShort) / unitTicks_);
    if (last > score::kLongestMelody)
        return std::nullopt;
    std::optional<int> found;
    double least = 0;
    for (int units = std::max(0, static_cast<int>(first)); units <= last; ++units) {
        const double distance = std::abs(units * unitTicks_ - ticks);
        if (!accepts(units) || (found && distance >= least))
            continue;
        found = units;
        least = distance;
    }
    return found;
}

double NoteGrid::rounding() const {
    return std::min(1.0, kMostOfUnit * unitTicks_);
}

int valuesFor(int units) {
    constexpr int kWhole = 4 * score::kUnitsPerQuarter;
    const int wholes = std::max(0, units / kWhole - 1);
    const auto others = static_cast<int>(score::valuesOf(units - wholes * kWhole).size());
    return others == 0 && units > 0 ? kNoValues : wholes + others;
}

}  // namespace midi_recording
