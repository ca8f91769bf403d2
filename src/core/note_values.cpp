#include "core/note_values.h"

#include "platform/user_text.h"

namespace note_values {

QString restName(const NoteValue& value) {
    return UserText::tr("Pausa di ") + UserText::tr(value.name).toLower();
}

}  // namespace note_values
