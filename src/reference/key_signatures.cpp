#include "reference/key_signatures.h"

#include <QStringList>

namespace key_signatures {

QString majorName(const KeySignature& key) {
    return QLatin1String(key.major) + QStringLiteral(" maggiore");
}

QString minorName(const KeySignature& key) {
    return QLatin1String(key.minor) + QStringLiteral(" minore");
}

QString signsInWords(const KeySignature& key) {
    if (key.count() == 0)
        return QStringLiteral("Nessuna alterazione");
    const QLatin1String kind(key.isSharp() ? "diesis" : key.count() == 1 ? "bemolle" : "bemolli");
    QStringList notes;
    for (const Sign& sign : signsOf(key))
        notes += QLatin1String(sign.note);
    return QStringLiteral("%1 %2: %3").arg(key.count()).arg(kind, notes.join(QStringLiteral(", ")));
}

}  // namespace key_signatures
