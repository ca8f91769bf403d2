#include "eartraining/ear_speech.h"

#include "eartraining/ear_prompt.h"
#include "eartraining/score.h"

QString EarSpeech::prompt(const EarPrompt& prompt) {
    const QString text = UserText::tr(prompt.text.data());
    if (text == prompt_)
        return {};
    prompt_ = text;
    return text;
}

QString EarSpeech::inWords(const Score& score) {
    return UserText::tr("Risposte esatte: %1. Risposte errate: %2. %3")
        .arg(score.right())
        .arg(score.wrong())
        .arg(score.percentage());
}
