#pragma once

#include "core/pitch.h"
#include "platform/user_text.h"

#include <array>

/// The four types of three-note chord in root position.
namespace chord_types {

using Notes = std::array<pitch::NoteNumber, 3>;

struct Type {
    const char* name;
    int middle;  ///< in semitones above the root
    int top;
    bool excludable;
};

constexpr std::array<Type, 4> kTypes{{
    {QT_TRANSLATE_NOOP("UserText", "Min"), 3, 7, false},
    {QT_TRANSLATE_NOOP("UserText", "Mag"), 4, 7, false},
    {QT_TRANSLATE_NOOP("UserText", "Dim"), 3, 6, true},
    {QT_TRANSLATE_NOOP("UserText", "Ecc"), 4, 8, true},
}};
constexpr int kCount = static_cast<int>(kTypes.size());

constexpr Notes notesOf(int type, pitch::NoteNumber root) {
    const Type& chord = kTypes[static_cast<std::size_t>(type)];
    return {root, static_cast<pitch::NoteNumber>(root + chord.middle),
            static_cast<pitch::NoteNumber>(root + chord.top)};
}

}  // namespace chord_types
