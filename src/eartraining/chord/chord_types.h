#pragma once

#include "core/pitch.h"
#include "platform/user_text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>

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

/// The type that three keys form in any octave and inversion; nothing for other keys.
template <typename Keys>
std::optional<int> typeOf(const Keys& keys) {
    if (keys.size() != 3)
        return std::nullopt;
    std::set<int> classes;
    for (const int key : keys)
        classes.insert(key % pitch::kSemitones);
    for (int type = 0; type < kCount; ++type) {
        const auto formedOn = [&](int root) {
            const Type& chord = kTypes[static_cast<std::size_t>(type)];
            return classes == std::set<int>{root, (root + chord.middle) % pitch::kSemitones,
                                            (root + chord.top) % pitch::kSemitones};
        };
        if (std::any_of(classes.begin(), classes.end(), formedOn))
            return type;
    }
    return std::nullopt;
}

}  // namespace chord_types
