#include "composer/score/written_value.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace score {
namespace {

/// A third of a quarter note has fifteen digits in a file, and a tie adds such numbers.
constexpr double kLargestError = 1e-9;

constexpr std::size_t kValues = note_values::kAll.size();

constexpr int plainUnits(std::size_t row) {
    return static_cast<int>(note_values::kAll[row].quarters * kUnitsPerQuarter);
}

static_assert(plainUnits(kValues - 1) % 6 == 0, "its dotted value and its triplet are whole too");

/// Each value dotted and then plain, from the longest to the shortest.
constexpr auto kPlain = [] {
    std::array<WrittenValue, 2 * kValues> values;
    for (std::size_t row = 0; row < kValues; ++row) {
        values[2 * row] = {note_values::kAll[row].duration, true, false};
        values[2 * row + 1] = {note_values::kAll[row].duration, false, false};
    }
    return values;
}();

/// Whether values that are not of a triplet can fill so many units: the shortest and the shortest
/// dotted one add up to every multiple of their difference from there on.
constexpr bool isPlain(int units) {
    constexpr int kShortest = plainUnits(kValues - 1);
    return units == 0 || (units >= kShortest && units % (kShortest / 2) == 0);
}

void appendPlain(std::vector<WrittenValue>& values, int units) {
    while (units > 0) {
        const auto* const longest =
            std::find_if(kPlain.begin(), kPlain.end(), [units](const WrittenValue& value) {
                return value.units() <= units && isPlain(units - value.units());
            });
        values.push_back(*longest);
        units -= longest->units();
    }
}

}  // namespace

std::optional<int> unitsOf(double quarters) {
    const double units = std::round(quarters * kUnitsPerQuarter);
    const bool isWhole = std::abs(quarters - units / kUnitsPerQuarter) <= kLargestError;
    if (!isWhole || !(units > 0) || units > kLongestMelody)
        return std::nullopt;
    return static_cast<int>(units);
}

int WrittenValue::units() const {
    const int plain = plainUnits(static_cast<std::size_t>(value));
    const int whole = dotted ? plain + plain / 2 : plain;
    return triplet ? whole / 3 * 2 : whole;
}

std::optional<WrittenValue> plainValue(int units) {
    const auto* const value =
        std::find_if(kPlain.begin(), kPlain.end(),
                     [units](const WrittenValue& v) { return v.units() == units; });
    return value == kPlain.end() ? std::nullopt : std::optional(*value);
}

std::optional<WrittenValue> tripletValue(int units) {
    if (units % 2 != 0)
        return std::nullopt;
    std::optional<WrittenValue> value = plainValue(units / 2 * 3);
    if (value)
        value->triplet = true;
    return value;
}

std::vector<WrittenValue> valuesOf(int units) {
    std::vector<WrittenValue> fewest;
    if (isPlain(units)) {
        appendPlain(fewest, units);
        return fewest;
    }
    for (const note_values::NoteValue& row : note_values::kAll) {
        const WrittenValue triplet{row.duration, false, true};
        const int rest = units - triplet.units();
        if (rest < 0 || !isPlain(rest))
            continue;
        std::vector<WrittenValue> values;
        appendPlain(values, rest);
        values.push_back(triplet);
        if (fewest.empty() || values.size() < fewest.size())
            fewest = std::move(values);
    }
    return fewest;
}

}  // namespace score
