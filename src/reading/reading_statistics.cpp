#include "reading/reading_statistics.h"

#include "core/text.h"
#include "platform/user_text.h"

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
    if (mode == ReadingMode::Normale)
        return UserText::tr(" R. Esatte: ") + text::percentage(correct, correct + wrong);
    return UserText::tr("  R. Esatte: ") + text::percentage(correct, shown);
}

QString ReadingStatistics::timeTaken() const {
    return UserText::tr("Tempo Impiegato: %1:%2 mm:ss").arg(seconds / 60 % 60).arg(seconds % 60);
}
