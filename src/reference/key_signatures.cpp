#include "reference/key_signatures.h"

#include "platform/user_text.h"

#include <QStringList>

namespace key_signatures {

QString majorName(const KeySignature& key) {
    return UserText::tr(key.major) + UserText::tr(" maggiore");
}

QString minorName(const KeySignature& key) {
    return UserText::tr(key.minor) + UserText::tr(" minore");
}

QString signsInWords(const KeySignature& key) {
    if (key.count() == 0)
        return UserText::tr("Nessuna alterazione");
    const QString kind = key.isSharp()      ? UserText::tr("diesis")
                         : key.count() == 1 ? UserText::tr("bemolle")
                                            : UserText::tr("bemolli");
    QStringList notes;
    for (const Sign& sign : signsOf(key))
        notes += UserText::tr(sign.note);
    return QStringLiteral("%1 %2: %3").arg(key.count()).arg(kind, notes.join(QStringLiteral(", ")));
}

}  // namespace key_signatures
