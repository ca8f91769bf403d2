#include "composer/composer_speech.h"

#include "platform/user_text.h"
#include "widgets/announcement.h"

#include <utility>

void ComposerSpeech::say(const QString& text) const {
    if (!silent_)
        announce(text);
}

void ComposerSpeech::undone() {
    say(UserText::tr("Annullato: %1").arg(melody_.change()));
}

void ComposerSpeech::redone() {
    say(UserText::tr("Ripetuto: %1").arg(melody_.change()));
}

void ComposerSpeech::transposed() {
    melody_.change();
    say(UserText::tr("Melodia trasposta"));
}

void ComposerSpeech::directInsertion(bool on) {
    say(on ? UserText::tr("Inserimento diretto") : UserText::tr("Senza inserimento diretto"));
}

void ComposerSpeech::playing(bool playing) {
    if (std::exchange(playing_, playing) != playing)
        say(playing ? UserText::tr("Suona") : UserText::tr("Fermo"));
}

void ComposerSpeech::readActiveEntry() const {
    announce(melody_.activeEntry());
}

void ComposerSpeech::readMelody() const {
    announce(melody_.whole());
}
