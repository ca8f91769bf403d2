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

QString ReadingSpeech::verdict(Verdict verdict) const {
    if (mode_ == ReadingMode::Automatico)
        return verdict == Verdict::Right ? UserText::tr("Sì") : UserText::tr("No");
    return inWords(verdict);
}

void ReadingSpeech::count(int conta, int er) {
    conta_ = conta;
    er_ = er;
}

QString ReadingSpeech::noteAgain() const {
    return step_ ? staff_step::placeInWords(*step_) : UserText::tr("Nessuna nota");
}

QString ReadingSpeech::counts() const {
    return UserText::tr("Note: %1, errori: %2").arg(conta_).arg(er_);
}

QString ReadingSpeech::stop(const ReadingStatistics& statistics) {
    step_.reset();
    return statistics.empty() ? UserText::tr("Esercizio terminato") : statistics.inWords();
}
