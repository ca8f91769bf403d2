#include "composer/staff/entry_in_words.h"

#include "platform/user_text.h"
#include "widgets/piano_key_name.h"

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
        const QString name = QString::fromUtf8(note_values::rowOf(value.duration).fraction);
        parts += value.dots > 0 ? name + UserText::tr(" col punto") : name;
    }
    const QString values = parts.join(QStringLiteral(" + "));
    return figure.triplet ? UserText::tr("terzina di ") + values : values;
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
