#include "composer/melody/rhythm.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace rhythm {
namespace {

constexpr int kSignificantDigits = 15;
constexpr QLatin1Char kComma(',');
constexpr QLatin1Char kPoint('.');

}  // namespace

double ValueNameToDuration(QStringView name, QStringView multiplier) {
    const auto* const value = std::find_if(kValues.begin(), kValues.end(), [name](const auto& v) {
        return name == QLatin1String(v.name);
    });
    bool isNumber = false;
    const short times = multiplier.toShort(&isNumber);
    return (value == kValues.end() ? 1 : value->duration) * (isNumber ? times : 1);
}

QString DurationToValueName(double duration) {
    const auto* const value =
        std::find_if(kValues.begin(), kValues.end(),
                     [duration](const auto& v) { return v.duration == duration; });
    return QLatin1String(value == kValues.end() ? kNoValueName : value->name);
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
