#pragma once

#include <QChar>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>

class QLocale;

/// Rhythmic values: their names, their symbols, and durations as text. A duration is counted in
/// quarter notes.
namespace rhythm {

struct NamedDuration {
    const char* name;
    double duration;
};

/// The values that have a name, in the order of the list that shows them; a dotted value is in
/// parentheses and followed by a point.
constexpr std::array<NamedDuration, 13> kValues{{{"4/4", 4},
                                                 {"(4/4).", 6},
                                                 {"2/4", 2},
                                                 {"(2/4).", 3},
                                                 {"1/4", 1},
                                                 {"(1/4).", 1.5},
                                                 {"1/8", 0.5},
                                                 {"(1/8).", 0.75},
                                                 {"1/16", 0.25},
                                                 {"(1/16).", 0.375},
                                                 {"1/32", 0.125},
                                                 {"(1/32).", 0.1875},
                                                 {"1/64", 0.0625}}};

/// The name of every other duration, such as a tied or a triplet one.
constexpr const char* kNoValueName = "na";

/// The note symbols of the palette, from the longest to the shortest.
constexpr std::array<NamedDuration, 7> kSymbols{{{"Semibreve", 4},
                                                 {"Minima", 2},
                                                 {"Semiminima", 1},
                                                 {"Croma", 0.5},
                                                 {"Semicroma", 0.25},
                                                 {"Biscroma", 0.125},
                                                 {"Semibiscroma", 0.0625}}};

/// The duration of a named value times a whole multiplier. A name without a value counts as 1, and
/// so does a multiplier that is no 16-bit number.
double ValueNameToDuration(QStringView name, QStringView multiplier);

/// The name of exactly this duration, or `kNoValueName`.
QString DurationToValueName(double duration);

/// A triplet's duration: two thirds of the plain one.
constexpr double tripletOf(double duration) {
    return (duration + duration) / 3;
}

/// The comma or the point, whichever the locale's numbers are closer to: both are read everywhere.
QChar decimalSeparator(const QLocale& locale);

/// The shortest text of at most 15 significant digits, never grouped.
QString durationText(double duration, QChar decimalSeparator);

/// The number that a text says, with a comma or a point; nothing if it says none.
std::optional<double> numberFromText(QStringView text);

}  // namespace rhythm
