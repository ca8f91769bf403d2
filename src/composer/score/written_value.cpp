#include "composer/score/written_value.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace score {
namespace {

/// A third of a quarter note has fifteen digits in a file, and a tie adds such numbers.
constexpr double kLargestError = 1e-9;

using note_values::kWritten;

constexpr int plainUnits(std::size_t row) {
    return static_cast<int>(kWritten[row].quarters * kUnitsPerQuarter);
}

constexpr std::size_t kShortest = kWritten.size() - 1;
static_assert(plainUnits(kShortest) % 3 == 0, "its triplet is whole too");

/// Each value dotted and then plain, from the longest to the shortest, which has no dotted one.
constexpr auto kPlain = [] {
    std::array<WrittenValue, 2 * kWritten.size() - 1> values;
    for (std::size_t row = 0; row < kShortest; ++row) {
        values[2 * row] = {kWritten[row].duration, true, false};
        values[2 * row + 1] = {kWritten[row].duration, false, false};
    }
    values.back() = {kWritten[kShortest].duration, false, false};
    return values;
}();

constexpr WrittenValue kDottedWhole = kPlain[0];
constexpr WrittenValue kWhole = kPlain[1];

/// Whether values that are not of a triplet, and not shorter than one, can fill so many units. They
/// add up to every multiple of half the shortest value that may be dotted.
constexpr bool isPlain(int units, std::size_t shortest) {
    const int least = plainUnits(shortest);
    const int step = shortest == kShortest ? least : least / 2;
    return units == 0 || (units >= least && units % step == 0);
}

/// Units that such values can fill.
void appendPlain(std::vector<WrittenValue>& values, int units, std::size_t shortest) {
    while (units > 0) {
        const auto* const longest =
            std::find_if(kPlain.begin(), kPlain.end(), [&](const WrittenValue& value) {
                return value.units() <= units && isPlain(units - value.units(), shortest);
            });
        values.push_back(units > kDottedWhole.units() ? kWhole : *longest);
        units -= values.back().units();
    }
}

/// Of values that are not shorter than one.
std::vector<WrittenValue> valuesWith(std::size_t shortest, int units) {
    std::vector<WrittenValue> fewest;
    if (isPlain(units, shortest)) {
        appendPlain(fewest, units, shortest);
        return fewest;
    }
    for (std::size_t row = 0; row <= shortest; ++row) {
        const WrittenValue triplet{kWritten[row].duration, false, true};
        const int rest = units - triplet.units();
        if (rest < 0 || !isPlain(rest, shortest))
            continue;
        std::vector<WrittenValue> values;
        appendPlain(values, rest, shortest);
        values.push_back(triplet);
        if (fewest.empty() || values.size() < fewest.size())
            fewest = std::move(values);
    }
    return fewest;
}

}  // namespace

std::optional<int> unitsOf(double quarters) {
    const double units = std::round(quarters * kUnitsPerQuarter);
    const bool isWhole = std::abs(quarters - units / kUnitsPerQuarter) <= kLargestError;
    if (!isWhole || !(units > 0) || units > kLongestMelody)
        return std::nullopt;
    return static_cast<int>(units);
}

bool WrittenValue::isWhole() const {
    return !dotted || value != kWritten[kShortest].duration;
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

std::vector<WrittenValue> plainValuesOf(int units) {
    std::vector<WrittenValue> values;
    if (isPlain(units, kShortest - 1))
        appendPlain(values, units, kShortest - 1);
    return values;
}

std::vector<WrittenValue> valuesOf(int units) {
    std::vector<WrittenValue> values = valuesWith(kShortest - 1, units);
    return values.empty() ? valuesWith(kShortest, units) : values;
}

}  // namespace score
