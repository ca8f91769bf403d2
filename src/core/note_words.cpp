#include "core/note_words.h"

#include "core/pitch.h"
#include "platform/user_text.h"

QString noteInWords(int noteNumber) {
    if (!pitch::isPlayable(noteNumber))
        return {};
    if (noteNumber == pitch::kMiddleC)
        return UserText::tr("Do centrale");
    QString name = pitch::NoteName(noteNumber);
    name.replace(QLatin1Char('#'), UserText::tr(" diesis"));
    return QStringLiteral("%1 %2").arg(name).arg(noteNumber / pitch::kSemitones - 1);
}
