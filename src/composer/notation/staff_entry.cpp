#include "composer/notation/staff_entry.h"

#include "composer/score/written_value.h"
#include "core/pitch.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace staff_entry {
namespace {

constexpr double kSignCharacter = 0.73;  ///< staff spaces

/// No figure is longer.
constexpr int kMostUnits = kMostValues * 6 * score::kUnitsPerQuarter;

/// Empty if it would take too many values.
std::vector<Value> figureValues(int units) {
    std::vector<Value> values;
    if (units > kMostUnits)
        return values;
    for (const score::WrittenValue& value : score::plainValuesOf(units))
        values.push_back({value.value, value.dotted ? 1 : 0});
    if (values.size() > kMostValues)
        values.clear();
    return values;
}

Value nearestValue(double quarters) {
    Value nearest;
    double least = std::numeric_limits<double>::infinity();
    for (const note_values::NoteValue& value : note_values::kAll) {
        for (const int dots : {1, 0}) {
            const double length = dots > 0 ? note_values::dotted(value.quarters) : value.quarters;
            const double distance = std::abs(quarters - length);
            if (distance < least)
                nearest = {value.duration, dots};
            least = std::min(least, distance);
        }
    }
    return nearest;
}

}  // namespace

Figure figureOf(double duration) {
    const int units = score::unitsOf(duration).value_or(0);
    std::vector<Value> values = figureValues(units);
    const bool triplet = values.empty() && units % 2 == 0;
    if (triplet)
        values = figureValues(units / 2 * 3);
    if (values.empty())
        return {{nearestValue(duration)}, false, false};
    return {std::move(values), triplet, true};
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

double durationSignWidth(double duration) {
    return kSignCharacter * static_cast<double>(durationSign(duration).size());
}

}  // namespace staff_entry
