#include "core/text.h"

#include <cstdint>

namespace text {

QString percentage(int part, int whole) {
    if (whole == 0)
        return QStringLiteral("0.00%");
    // Hundredths of a percent, rounded half up in whole numbers.
    const std::int64_t hundredths =
        (std::int64_t{part} * 20000 + whole) / (2 * std::int64_t{whole});
    return QStringLiteral("%1.%2%")
        .arg(hundredths / 100)
        .arg(hundredths % 100, 2, 10, QLatin1Char('0'));
}

}  // namespace text
