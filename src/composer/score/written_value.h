#pragma once

#include "core/note_values.h"

#include <optional>
#include <vector>

/// Durations as notation writes them. They are counted exactly, in units of a 96th of a quarter
/// note: every note value, dotted or in a triplet, is a whole number of them, but a dotted 128th
/// note.
namespace score {

constexpr int kUnitsPerQuarter = 96;

/// No longer duration is written, and no longer melody.
constexpr int kLongestMelody = 32767 * 4 * kUnitsPerQuarter;

/// The units of a duration in quarter notes. Nothing if it is not above 0, or if it is further from
/// a whole number of units than the decimals of a melody's file explain.
std::optional<int> unitsOf(double quarters);

/// What one note or rest is written with. A value of a triplet lasts two thirds.
struct WrittenValue {
    note_values::Duration value = note_values::Duration::Quarter;
    bool dotted = false;
    bool triplet = false;

    int units() const;

    /// Whether it lasts a whole number of units, as all that are written do.
    bool isWhole() const;

    bool operator==(const WrittenValue&) const = default;
};

/// The single value, not of a triplet, that lasts so many units.
std::optional<WrittenValue> plainValue(int units);

/// The same of a triplet.
std::optional<WrittenValue> tripletValue(int units);

/// Values that are not of a triplet and last so many units together, no 128th notes; none if there
/// are no such values. The longest comes first, but only the last can be a dotted semibreve: 8
/// quarter notes are two semibreves.
std::vector<WrittenValue> plainValuesOf(int units);

/// The same with one value of a triplet, the last, where nothing else will do. 128th notes stand
/// only where nothing at all does without.
std::vector<WrittenValue> valuesOf(int units);

}  // namespace score
