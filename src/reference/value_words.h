#pragma once

#include "core/note_values.h"

#include <QString>

/// How a note of this value is written, in words: "testa piena, gambo, 2 codette".
QString noteSignInWords(const note_values::NoteValue& value);

/// How its rest is written, with the rest's name: "Pausa di croma: asta con 1 uncino".
QString restSignInWords(const note_values::NoteValue& value);
