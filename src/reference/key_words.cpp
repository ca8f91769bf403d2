#include "reference/key_words.h"

#include "platform/user_text.h"

#include <QStringList>

QString signsInWords(const key_signatures::KeySignature& key) {
    if (key.count() == 0)
        return UserText::tr("Nessuna alterazione");
    const QString kind = key.isSharp()      ? UserText::tr("diesis")
                         : key.count() == 1 ? UserText::tr("bemolle")
                                            : UserText::tr("bemolli");
    QStringList notes;
    for (const key_signatures::Sign& sign : key_signatures::signsOf(key))
        notes += UserText::tr(sign.note);
    return QStringLiteral("%1 %2: %3").arg(key.count()).arg(kind, notes.join(QStringLiteral(", ")));
}
