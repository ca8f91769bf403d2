#include "core/intervals.h"

#include <QStringList>

namespace intervals {
namespace {

struct QualityName {
    const char* text;
    const char* word;
};

constexpr std::array<QualityName, 5> kQualities{{{"Dim", "diminuita"},
                                                 {"Min", "minore"},
                                                 {"Mag", "maggiore"},
                                                 {"Gius", "giusta"},
                                                 {"Ecc", "eccedente"}}};

constexpr int kSmallestNumber = 2;
constexpr std::array<const char*, 7> kNumbers{"Seconda", "Terza",   "Quarta", "Quinta",
                                              "Sesta",   "Settima", "Ottava"};

const QualityName& nameOf(Quality quality) {
    return kQualities[static_cast<std::size_t>(quality)];
}

}  // namespace

QString nameOf(const Interval& interval) {
    return QStringLiteral("%1 %2")
        .arg(interval.number)
        .arg(QLatin1String(nameOf(interval.quality).text));
}

QString inWords(const Interval& interval) {
    const auto number = static_cast<std::size_t>(interval.number - kSmallestNumber);
    return QStringLiteral("%1 %2").arg(QLatin1String(kNumbers[number]),
                                       QLatin1String(nameOf(interval.quality).word));
}

QString semitonesInWords(int semitones) {
    return semitones == 1 ? QStringLiteral("1 semitono")
                          : QStringLiteral("%1 semitoni").arg(semitones);
}

QString abbreviationsInWords() {
    QStringList words;
    for (const QualityName& quality : kQualities) {
        words +=
            QStringLiteral("%1 = %2").arg(QLatin1String(quality.text), QLatin1String(quality.word));
    }
    return words.join(QStringLiteral("    "));
}

}  // namespace intervals
