#include "reference/value_words.h"

#include "platform/user_text.h"

namespace {

using note_values::Duration;
using note_values::NoteValue;

/// The flags of its note are as many as the hooks of its rest.
int flagsOf(const NoteValue& value) {
    const int shorterThanQuarter =
        static_cast<int>(value.duration) - static_cast<int>(Duration::Quarter);
    return value.flagUp ? shorterThanQuarter : 0;
}

QString restSign(const NoteValue& value) {
    switch (value.duration) {
        case Duration::Whole:
            return UserText::tr("rettangolo appeso sotto la quarta linea");
        case Duration::Half:
            return UserText::tr("rettangolo appoggiato sulla terza linea");
        case Duration::Quarter:
            return UserText::tr("segno a zig-zag");
        default:
            return flagsOf(value) == 1 ? UserText::tr("asta con 1 uncino")
                                       : UserText::tr("asta con %1 uncini").arg(flagsOf(value));
    }
}

}  // namespace

QString noteSignInWords(const NoteValue& value) {
    QString words = value.head == note_values::Glyph::NoteheadBlack ? UserText::tr("testa piena")
                                                                    : UserText::tr("testa vuota");
    words += value.stem ? UserText::tr(", gambo") : UserText::tr(", senza gambo");
    const int flags = flagsOf(value);
    if (flags > 0)
        words += flags == 1 ? UserText::tr(", 1 codetta") : UserText::tr(", %1 codette").arg(flags);
    return words;
}

QString restSignInWords(const NoteValue& value) {
    return QStringLiteral("%1: %2").arg(note_values::restName(value), restSign(value));
}
