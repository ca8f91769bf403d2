#include "composer/notation/staff_entry.h"

#include "core/pitch.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace staff_entry {
namespace {

/// Durations are counted in units of 1/32 of a quarter, which every value is a multiple of.
constexpr int kUnitsPerQuarter = 32;

struct ValueUnits {
    Value value;
    int units;
};

/// Every note value, before it the dotted one, which is longer.
constexpr auto kValues = [] {
    std::array<ValueUnits, 2 * note_values::kAll.size()> values{};
    std::size_t i = 0;
    for (const note_values::NoteValue& value : note_values::kAll) {
        const double dotted = note_values::dotted(value.quarters);
        values[i++] = {{value.duration, 1}, static_cast<int>(dotted * kUnitsPerQuarter)};
        values[i++] = {{value.duration, 0}, static_cast<int>(value.quarters * kUnitsPerQuarter)};
    }
    return values;
}();
constexpr ValueUnits kDottedLongest = kValues[0];
constexpr ValueUnits kLongest = kValues[1];
constexpr ValueUnits kDottedShortest = kValues[kValues.size() - 2];
static_assert(kDottedShortest.units % 2 == 1, "no other value is an odd number of units");

constexpr double kMostQuarters =
    static_cast<double>(kMostValues) * kDottedLongest.units / kUnitsPerQuarter;

/// Durations come from texts of 15 digits, and ties add them up.
constexpr double kTolerance = 1e-6;

/// Zero for a duration that is no whole number of units or more than a figure holds.
int unitsOf(double quarters) {
    if (!(quarters > 0) || quarters > kMostQuarters)
        return 0;
    const double units = quarters * kUnitsPerQuarter;
    const double whole = std::round(units);
    return std::abs(units - whole) < kTolerance ? static_cast<int>(whole) : 0;
}

/// The largest value first, but no dotted semibreve before the last one of a long tie: 8 is two
/// semibreves. Empty if it would take too many values.
std::vector<Value> decomposed(int units) {
    std::vector<Value> values;
    const bool odd = units % 2 != 0;
    if (odd)
        units -= kDottedShortest.units;
    while (units > 0) {
        const auto* next = units > kDottedLongest.units
                               ? &kLongest
                               : std::find_if(kValues.begin(), kValues.end(),
                                              [&](const auto& v) { return v.units <= units; });
        values.push_back(next->value);
        units -= next->units;
    }
    if (odd)
        values.push_back(kDottedShortest.value);
    if (units < 0 || values.size() > kMostValues)
        values.clear();
    return values;
}

Value nearestValue(double quarters) {
    const auto distance = [&](const ValueUnits& value) {
        return std::abs(quarters - static_cast<double>(value.units) / kUnitsPerQuarter);
    };
    return std::min_element(kValues.begin(), kValues.end(),
                            [&](const auto& a, const auto& b) { return distance(a) < distance(b); })
        ->value;
}

}  // namespace

Figure figureOf(double duration) {
    for (const bool triplet : {false, true}) {
        auto values = decomposed(unitsOf(triplet ? duration * 3 / 2 : duration));
        if (!values.empty())
            return {std::move(values), triplet, true};
    }
    return {{nearestValue(duration)}, false, false};
}

bool isRest(const Entry& entry) {
    return !pitch::isPlayable(entry.noteNumber);
}

const letter::EntryLetter* engravedLetter(const Entry& entry) {
    const letter::EntryLetter* row = letter::find(entry.attribute);
    return row && row->sign && !isRest(entry) ? row : nullptr;
}

std::optional<glyph_table::ArticulationSign> articulationOf(const Entry& entry) {
    const letter::EntryLetter* row = engravedLetter(entry);
    return row ? row->sign : std::nullopt;
}

QString durationSign(double duration) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return QStringLiteral("[×%1]").arg(locale.toString(duration, 'g', 3));
}

}  // namespace staff_entry
