#include "reading/reading_statistics.h"

#include "core/text.h"
#include "platform/user_text.h"

#include <QStringList>

namespace {

QString timeInWords(std::int64_t seconds) {
    const std::int64_t minutes = seconds / 60;
    const std::int64_t rest = seconds % 60;
    const QString words =
        rest == 1 ? UserText::tr("1 secondo") : UserText::tr("%1 secondi").arg(rest);
    if (minutes == 0)
        return words;
    return UserText::tr("%1 e %2").arg(
        minutes == 1 ? UserText::tr("1 minuto") : UserText::tr("%1 minuti").arg(minutes), words);
}

}  // namespace

QString ReadingStatistics::rightAnswers() const {
    return UserText::tr(" Risposte esatte: %1").arg(correct);
}

QString ReadingStatistics::wrongAnswers() const {
    return UserText::tr(" Risposte errate: %1").arg(wrong);
}

QString ReadingStatistics::answersGiven() const {
    return UserText::tr(" Risposte date: %1").arg(correct + wrong);
}

QString ReadingStatistics::notesShown() const {
    return UserText::tr(" Note mostrate: %1").arg(shown);
}

QString ReadingStatistics::percentage() const {
    const QString caption =
        mode == ReadingMode::Normale ? UserText::tr(" R. Esatte: ") : UserText::tr("  R. Esatte: ");
    return caption + text::percentage(correct, outOf());
}

QString ReadingStatistics::timeTaken() const {
    return UserText::tr("Tempo Impiegato: %1:%2 mm:ss").arg(seconds / 60 % 60).arg(seconds % 60);
}

QString ReadingStatistics::inWords() const {
    QStringList parts;
    if (mode == ReadingMode::Automatico)
        parts += notesShown().trimmed();
    parts += {rightAnswers().trimmed(), wrongAnswers().trimmed(),
              QStringLiteral("%1%").arg(qRound(100.0 * correct / outOf())), timeInWords(seconds)};
    return parts.join(QStringLiteral(". "));
}
