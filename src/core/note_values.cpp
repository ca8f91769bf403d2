#include "core/note_values.h"

#include "platform/user_text.h"

namespace note_values {

QString nameInText(const NoteValue& value) {
    return UserText::tr(value.name).toLower();
}

QString restName(const NoteValue& value) {
    return UserText::tr("Pausa di ") + nameInText(value);
}

}  // namespace note_values
