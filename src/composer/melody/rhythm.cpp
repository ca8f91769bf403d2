#include "composer/melody/rhythm.h"

#include "core/note_values.h"
#include "platform/user_text.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace rhythm {
namespace {

constexpr int kSignificantDigits = 15;
constexpr QLatin1Char kComma(',');
constexpr QLatin1Char kPoint('.');

}  // namespace

const std::vector<NamedDuration>& namedValues() {
    static const std::vector<NamedDuration> kValues = [] {
        std::vector<NamedDuration> values;
        for (const note_values::NoteValue& value : note_values::kAll) {
            const QString name = QString::fromUtf8(value.fraction);
            values.push_back({name, value.quarters});
            values.push_back(
                {QStringLiteral("(%1).").arg(name), note_values::dotted(value.quarters)});
        }
        values.pop_back();
        return values;
    }();
    return kValues;
}

double ValueNameToDuration(QStringView name, QStringView multiplier) {
    const auto& values = namedValues();
    const auto value = std::find_if(values.begin(), values.end(),
                                    [name](const NamedDuration& v) { return v.name == name; });
    bool isNumber = false;
    const short times = multiplier.toShort(&isNumber);
    return (value == values.end() ? 1 : value->duration) * (isNumber ? times : 1);
}

QString DurationToValueName(double duration) {
    const auto& values = namedValues();
    const auto value =
        std::find_if(values.begin(), values.end(),
                     [duration](const NamedDuration& v) { return v.duration == duration; });
    return value == values.end() ? UserText::tr(kNoValueName) : value->name;
}

QChar decimalSeparator(const QLocale& locale) {
    return locale.decimalPoint() == kPoint ? kPoint : kComma;
}

QString durationText(double duration, QChar decimalSeparator) {
    QString text = QString::number(duration, 'g', kSignificantDigits).toUpper();
    return text.replace(kPoint, decimalSeparator);
}

std::optional<double> numberFromText(QStringView text) {
    QString plain = text.trimmed().toString();
    plain.replace(kComma, kPoint);
    bool isNumber = false;
    const double number = plain.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        return std::nullopt;
    return number;
}

}  // namespace rhythm
