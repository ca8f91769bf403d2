#include "reading/reading_statistics.h"

#include "core/text.h"

QString ReadingStatistics::rightAnswers() const {
    return QStringLiteral(" Risposte esatte: %1").arg(correct);
}

QString ReadingStatistics::wrongAnswers() const {
    return QStringLiteral(" Risposte errate: %1").arg(wrong);
}

QString ReadingStatistics::answersGiven() const {
    return QStringLiteral(" Risposte date: %1").arg(correct + wrong);
}

QString ReadingStatistics::notesShown() const {
    return QStringLiteral(" Note mostrate: %1").arg(shown);
}

QString ReadingStatistics::percentage() const {
    if (mode == ReadingMode::Normale)
        return QStringLiteral(" R. Esatte: ") + text::percentage(correct, correct + wrong);
    return QStringLiteral("  R. Esatte: ") + text::percentage(correct, shown);
}

QString ReadingStatistics::timeTaken() const {
    return QStringLiteral("Tempo Impiegato: %1:%2 mm:ss").arg(seconds / 60 % 60).arg(seconds % 60);
}
