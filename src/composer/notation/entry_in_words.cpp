#include "composer/notation/entry_in_words.h"

#include "core/note_words.h"
#include "platform/user_text.h"

#include <QLocale>
#include <QStringList>

namespace staff_entry {
namespace {

QString durationInWords(double duration) {
    const Figure figure = figureOf(duration);
    if (!figure.exact)
        return UserText::tr("durata %1").arg(QLocale().toString(duration));
    QStringList parts;
    for (const Value& value : figure.values) {
        const QString name = note_values::nameInText(note_values::rowOf(value.duration));
        parts += value.dots > 0 ? UserText::tr("%1 col punto").arg(name) : name;
    }
    const QString values = parts.join(UserText::tr(" legata a "));
    return figure.triplet ? UserText::tr("terzina di %1").arg(values) : values;
}

}  // namespace

QString inWords(const Entry& entry) {
    const QString name = isRest(entry) ? UserText::tr("pausa") : noteInWords(entry.noteNumber);
    QString words = QStringLiteral("%1, %2").arg(name, durationInWords(entry.duration));
    if (const letter::EntryLetter* row = engravedLetter(entry))
        words += QStringLiteral(", ") + UserText::tr(row->name);
    return words;
}

}  // namespace staff_entry
