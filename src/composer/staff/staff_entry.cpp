#include "composer/staff/staff_entry.h"

#include "core/pitch.h"
#include "widgets/piano_key_name.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace staff_entry {
namespace {

using engraving::Duration;

/// Durations are counted in units of 1/32 of a quarter, which every value is a multiple of.
constexpr int kUnitsPerQuarter = 32;

struct ValueUnits {
    Value value;
    int units;
};

constexpr std::array<ValueUnits, 14> kValues{{{{Duration::Whole, 1}, 192},
                                              {{Duration::Whole, 0}, 128},
                                              {{Duration::Half, 1}, 96},
                                              {{Duration::Half, 0}, 64},
                                              {{Duration::Quarter, 1}, 48},
                                              {{Duration::Quarter, 0}, 32},
                                              {{Duration::Eighth, 1}, 24},
                                              {{Duration::Eighth, 0}, 16},
                                              {{Duration::Sixteenth, 1}, 12},
                                              {{Duration::Sixteenth, 0}, 8},
                                              {{Duration::ThirtySecond, 1}, 6},
                                              {{Duration::ThirtySecond, 0}, 4},
                                              {{Duration::SixtyFourth, 1}, 3},
                                              {{Duration::SixtyFourth, 0}, 2}}};
constexpr ValueUnits kDottedWhole = kValues[0];
constexpr ValueUnits kWhole = kValues[1];
constexpr ValueUnits kDottedSixtyFourth = kValues[12];

constexpr double kMostQuarters =
    static_cast<double>(kMostValues) * kDottedWhole.units / kUnitsPerQuarter;

/// Durations come from texts of 15 digits, and ties add them up.
constexpr double kTolerance = 1e-6;

constexpr std::array<const char*, 7> kNames{"4/4", "2/4", "1/4", "1/8", "1/16", "1/32", "1/64"};

struct Letter {
    char letter;
    engraving::Articulation articulation;
    const char* words;
};

constexpr std::array<Letter, 3> kLetters{{
    {'s', engraving::Articulation::Staccato, "staccato"},
    {'t', engraving::Articulation::Tenuto, "tenuto"},
    {'a', engraving::Articulation::Accent, "accentato"},
}};

const Letter* letterOf(const Entry& entry) {
    const auto* found = std::find_if(kLetters.begin(), kLetters.end(), [&](const Letter& letter) {
        return letter.letter == entry.attribute;
    });
    return found == kLetters.end() || isRest(entry) ? nullptr : found;
}

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
        units -= kDottedSixtyFourth.units;
    while (units > 0) {
        const auto* next = units > kDottedWhole.units
                               ? &kWhole
                               : std::find_if(kValues.begin(), kValues.end(),
                                              [&](const auto& v) { return v.units <= units; });
        values.push_back(next->value);
        units -= next->units;
    }
    if (odd)
        values.push_back(kDottedSixtyFourth.value);
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

QString durationInWords(double duration) {
    const Figure figure = figureOf(duration);
    if (!figure.exact)
        return QStringLiteral("durata %1").arg(QLocale().toString(duration));
    QStringList parts;
    for (const Value& value : figure.values) {
        const auto name = QLatin1String(kNames[static_cast<std::size_t>(value.duration)]);
        parts += value.dots > 0 ? name + QStringLiteral(" col punto") : QString(name);
    }
    const QString values = parts.join(QStringLiteral(" + "));
    return figure.triplet ? QStringLiteral("terzina di ") + values : values;
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

engraving::Articulation articulationOf(const Entry& entry) {
    const Letter* letter = letterOf(entry);
    return letter ? letter->articulation : engraving::Articulation::None;
}

QString durationSign(double duration) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return QStringLiteral("[×%1]").arg(locale.toString(duration, 'g', 3));
}

QString inWords(const Entry& entry) {
    const QString name = isRest(entry) ? QStringLiteral("pausa") : noteInWords(entry.noteNumber);
    QString words = QStringLiteral("%1, %2").arg(name, durationInWords(entry.duration));
    if (const Letter* letter = letterOf(entry))
        words += QStringLiteral(", ") + QLatin1String(letter->words);
    return words;
}

}  // namespace staff_entry
