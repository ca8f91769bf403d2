#include "metronome/metronome_speech.h"

#include "platform/user_text.h"

namespace metronome_speech {

QString started(int tempo, const QString& timeSig) {
    return UserText::tr("Metronomo avviato, %1, %2").arg(timeSig).arg(tempo);
}

QString stopped() {
    return UserText::tr("Metronomo fermato");
}

QString waits() {
    return UserText::tr("Metronomo in attesa: prima ferma l'esercizio");
}

QString silent() {
    return UserText::tr("Fermalo e scegli un'uscita con MIDI Test, nel menu Opzioni");
}

QString tempo(int beatsPerMinute) {
    return UserText::tr("%1 pulsazioni al minuto").arg(beatsPerMinute);
}

QString timeSignature(const QString& timeSig) {
    return UserText::tr("Tempo %1").arg(timeSig);
}

QString stored(const QString& pattern, const QString& timeSig) {
    return UserText::tr("Sequenza %1, tempo %2").arg(pattern, timeSig);
}

QString refusedLetter() {
    return UserText::tr("Solo a, b e c");
}

QString full(int longest) {
    return UserText::tr("Al massimo %1 caratteri").arg(longest);
}

}  // namespace metronome_speech
