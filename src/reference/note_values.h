#pragma once

#include "widgets/engraving.h"

#include <array>

/// The note values, from the longest to the shortest.
namespace note_values {

struct NoteValue {
    engraving::Duration duration;
    const char* name;
    const char* otherName;  ///< after its share of a whole note
    const char* fraction;
    const char* rest;
};

constexpr std::array<NoteValue, 7> kAll{{
    {engraving::Duration::Whole, "Semibreve", "Intero", "4/4", "Pausa di semibreve"},
    {engraving::Duration::Half, "Minima", "Metà", "2/4", "Pausa di minima"},
    {engraving::Duration::Quarter, "Semiminima", "Quarto", "1/4", "Pausa di semiminima"},
    {engraving::Duration::Eighth, "Croma", "Ottavo", "1/8", "Pausa di croma"},
    {engraving::Duration::Sixteenth, "Semicroma", "Sedicesimo", "1/16", "Pausa di semicroma"},
    {engraving::Duration::ThirtySecond, "Biscroma", "Trentaduesimo", "1/32", "Pausa di biscroma"},
    {engraving::Duration::SixtyFourth, "Semibiscroma", "Sessantaquattresimo", "1/64",
     "Pausa di semibiscroma"},
}};

}  // namespace note_values
