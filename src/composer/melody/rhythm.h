#pragma once

#include "platform/user_text.h"

#include <QChar>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

class QLocale;

/// Rhythmic values as the edit frame lists them, and durations as text. A duration is counted in
/// quarter notes.
namespace rhythm {

struct NamedDuration {
    QString name;
    double duration;
};

/// The values that have a name, in the order of the list that shows them: each note value and then
/// its dotted one, "(1/4).". The shortest has no dotted one.
const std::vector<NamedDuration>& namedValues();

/// The name of every other duration, such as a tied or a triplet one.
constexpr const char* kNoValueName = QT_TRANSLATE_NOOP("UserText", "na");

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
