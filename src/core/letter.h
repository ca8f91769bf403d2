#pragma once

#include "core/glyph_table.h"
#include "platform/user_text.h"

#include <QLatin1String>
#include <QStringView>

#include <array>
#include <optional>

/// The letters that say how an entry of a melody is played. Whatever lists, plays, engraves or
/// announces a letter reads its row here.
namespace letter {

using glyph_table::Glyph;

struct EntryLetter {
    char letter;          ///< as melody files write it
    const char* name;     ///< announced by screen readers where the letter has a sign
    const char* toolTip;  ///< of the palette's button; null where the letter has no button
    int velocity;         ///< MIDI velocity 1..127; 0 for a rest
    /// A note sounds its total divided by this, and the rest of the total is silent. With 1 it
    /// sounds up to the gap before the next entry; 0 stands for a rest, which sends no note.
    int soundingDivisor;
    std::optional<glyph_table::ArticulationSign> sign;

    constexpr bool isRest() const { return soundingDivisor == 0; }
};

/// In the order of the edit frame's list.
constexpr auto kAll = std::to_array<EntryLetter>({
    {'n', QT_TRANSLATE_NOOP("UserText", "normale"), nullptr, 100, 1, {}},
    {'s',
     QT_TRANSLATE_NOOP("UserText", "staccato"),
     QT_TRANSLATE_NOOP("UserText", "Staccato"),
     120,
     4,
     {{Glyph::StaccatoAbove, Glyph::StaccatoBelow, 2, true}}},
    {'t',
     QT_TRANSLATE_NOOP("UserText", "tenuto"),
     QT_TRANSLATE_NOOP("UserText", "Tenuto"),
     100,
     2,
     {{Glyph::TenutoAbove, Glyph::TenutoBelow, 2, true}}},
    {'a',
     QT_TRANSLATE_NOOP("UserText", "accentato"),
     QT_TRANSLATE_NOOP("UserText", "Accentato"),
     127,
     1,
     {{Glyph::AccentAbove, Glyph::AccentBelow, 3, false}}},
    {'p', QT_TRANSLATE_NOOP("UserText", "pausa"), nullptr, 0, 0, {}},
});

/// Null for a letter that is none of these.
constexpr const EntryLetter* find(char letter) {
    for (const EntryLetter& row : kAll) {
        if (row.letter == letter)
            return &row;
    }
    return nullptr;
}

/// The letter of an entry's token; null unless the token is exactly one of these letters.
inline const EntryLetter* find(QStringView token) {
    return token.size() == 1 ? find(token.front().toLatin1()) : nullptr;
}

/// The row of a letter that the program itself names. One without a row does not compile.
consteval const EntryLetter& rowOf(char letter) {
    return *find(letter);
}

/// The token that an entry holds for a letter.
constexpr QLatin1String tokenOf(const EntryLetter& row) {
    return QLatin1String(&row.letter, 1);
}

constexpr QLatin1String kNormale = tokenOf(rowOf('n'));
constexpr QLatin1String kPausa = tokenOf(rowOf('p'));

}  // namespace letter
