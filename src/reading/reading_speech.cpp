#include "reading/reading_speech.h"

#include "platform/user_text.h"
#include "reading/staff_step.h"

#include <utility>

void ReadingSpeech::start(ReadingMode mode) {
    mode_ = mode;
    step_.reset();
}

QString ReadingSpeech::note(int step) {
    const std::optional<int> last = std::exchange(step_, step);
    const bool clefKnown = last && staff_step::isTreble(*last) == staff_step::isTreble(step);
    return mode_ == ReadingMode::Automatico && clefKnown ? staff_step::placeOnStaveInWords(step)
                                                         : staff_step::placeInWords(step);
}

QString ReadingSpeech::verdict(bool right) const {
    if (mode_ == ReadingMode::Automatico)
        return right ? UserText::tr("Sì") : UserText::tr("No");
    return right ? UserText::tr("Giusto") : UserText::tr("Sbagliato");
}

QString ReadingSpeech::noteAgain() const {
    return step_ ? staff_step::placeInWords(*step_) : UserText::tr("Nessuna nota");
}

QString ReadingSpeech::counts(int conta, int er) {
    return UserText::tr("Note: %1, errori: %2").arg(conta).arg(er);
}

QString ReadingSpeech::stop(const ReadingStatistics& statistics) {
    step_.reset();
    return statistics.empty() ? UserText::tr("Esercizio terminato") : statistics.inWords();
}
