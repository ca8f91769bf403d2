#include "core/intervals.h"

#include "platform/user_text.h"

#include <QStringList>

namespace intervals {
namespace {

struct QualityName {
    const char* text;
    const char* word;
};

constexpr std::array<QualityName, 5> kQualities{
    {{QT_TRANSLATE_NOOP("UserText", "Dim"), QT_TRANSLATE_NOOP("UserText", "diminuita")},
     {QT_TRANSLATE_NOOP("UserText", "Min"), QT_TRANSLATE_NOOP("UserText", "minore")},
     {QT_TRANSLATE_NOOP("UserText", "Mag"), QT_TRANSLATE_NOOP("UserText", "maggiore")},
     {QT_TRANSLATE_NOOP("UserText", "Gius"), QT_TRANSLATE_NOOP("UserText", "giusta")},
     {QT_TRANSLATE_NOOP("UserText", "Ecc"), QT_TRANSLATE_NOOP("UserText", "eccedente")}}};

constexpr int kSmallestNumber = 2;
constexpr std::array<const char*, 7> kNumbers{
    QT_TRANSLATE_NOOP("UserText", "Seconda"), QT_TRANSLATE_NOOP("UserText", "Terza"),
    QT_TRANSLATE_NOOP("UserText", "Quarta"),  QT_TRANSLATE_NOOP("UserText", "Quinta"),
    QT_TRANSLATE_NOOP("UserText", "Sesta"),   QT_TRANSLATE_NOOP("UserText", "Settima"),
    QT_TRANSLATE_NOOP("UserText", "Ottava")};

const QualityName& nameOf(Quality quality) {
    return kQualities[static_cast<std::size_t>(quality)];
}

}  // namespace

QString nameOf(const Interval& interval) {
    return QStringLiteral("%1 %2")
        .arg(interval.number)
        .arg(UserText::tr(nameOf(interval.quality).text));
}

QString inWords(const Interval& interval) {
    const auto number = static_cast<std::size_t>(interval.number - kSmallestNumber);
    return QStringLiteral("%1 %2").arg(UserText::tr(kNumbers[number]),
                                       UserText::tr(nameOf(interval.quality).word));
}

QString semitonesInWords(int semitones) {
    return semitones == 1 ? UserText::tr("1 semitono") : UserText::tr("%1 semitoni").arg(semitones);
}

QString sizeInWords(int semitones) {
    QStringList names;
    for (const Interval& interval : kAll) {
        if (interval.semitones == semitones)
            names += inWords(interval).toLower();
    }
    return QStringLiteral("%1, %2").arg(semitonesInWords(semitones),
                                        names.join(UserText::tr(" o ")));
}

QString abbreviationsInWords() {
    QStringList words;
    for (const QualityName& quality : kQualities) {
        words +=
            QStringLiteral("%1 = %2").arg(UserText::tr(quality.text), UserText::tr(quality.word));
    }
    return words.join(QStringLiteral("    "));
}

}  // namespace intervals
