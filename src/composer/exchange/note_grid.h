#pragma once

#include <optional>

namespace midi_recording {

/// The grid of 64th notes and their triplets, in units of the bar view, over ticks.
class NoteGrid {
public:
    explicit NoteGrid(double ticksPerQuarter);

    double unitTicks() const { return unitTicks_; }

    /// The units of a value that may be so much too short, or too long; nothing beside the grid.
    std::optional<int> unitsOf(double ticks, double tooShort, double tooLong) const;

    /// The same of several values together, which need not be on the grid.
    std::optional<int> sumOf(double ticks, double tooShort, double tooLong) const;

    /// What rounding to whole ticks explains.
    double rounding() const;
    std::optional<int> unitsOf(double ticks) const {
        return unitsOf(ticks, rounding(), rounding());
    }

private:
    std::optional<int> nearest(double ticks, double tooShort, double tooLong,
                               bool (*accepts)(int units)) const;

    double unitTicks_;
};

/// How many values write so many units; so many if none do.
constexpr int kNoValues = 1000;
int valuesFor(int units);

}  // namespace midi_recording
