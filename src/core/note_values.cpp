#include "core/note_values.h"

namespace note_values {

QString restName(const NoteValue& value) {
    return QStringLiteral("Pausa di ") + QString::fromUtf8(value.name).toLower();
}

}  // namespace note_values
