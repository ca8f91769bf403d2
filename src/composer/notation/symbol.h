#pragma once

#include "composer/notation/note_place.h"
#include "composer/notation/staff_entry.h"
#include "composer/score/spelling.h"
#include "core/engraving_measures.h"

#include <optional>
#include <vector>

namespace notation {

/// A note or a rest as it is engraved: one value of an entry's figure. The values of a note's
/// figure are tied together.
struct Symbol {
    int entry = 0;
    staff_entry::Value value;
    bool rest = false;
    bool triplet = false;
    bool opensEntry = true;
    bool closesEntry = true;
    double onset = 0;   ///< in quarter notes from the start of the melody
    double length = 0;  ///< in quarter notes
    bool endsBar = false;
    bool fillsBar = false;  ///< a rest of a whole bar, which is a semibreve's in the middle of it

    /// Of a note: how it is written, and the alteration whose sign stands before it, if one does.
    score::Spelling spelling;
    std::optional<int> accidental;

    Staff staff = Staff::Treble;
    engraving::Note note;  ///< not of a rest
    double stemEnd = 0;    ///< a position; of a note with a stem
    double x = 0;          ///< of the head's left edge, in staff spaces from the system's left
    double signWidth = 0;  ///< of the sign of its duration, in staff spaces; 0 without one

    bool flagged() const { return !rest && engraving::isFlagged(value.duration); }
    bool tiedToNext() const { return !rest && !closesEntry; }
};

/// Symbols of a system, both ends included.
struct Span {
    std::size_t first = 0;
    std::size_t last = 0;

    bool operator==(const Span&) const = default;
};

/// Appends the symbols of an entry that begins at `onset` and stands in no bar: every note has the
/// signs that the key does not give it. Nothing is known of its staff yet.
void appendSymbols(std::vector<Symbol>& symbols, int index, const staff_entry::Entry& entry,
                   double onset, const score::Key& key);

/// Chooses the staff of a symbol.
void placeOnStaff(Symbol& symbol, Staff staff);

/// How far a symbol reaches to the left and to the right of its `x`, and the middle of its head,
/// where the sign of its duration stands.
engraving::Extent extentOf(const Symbol& symbol);
engraving::Extent extentWithSign(const Symbol& symbol);
double middleOf(const Symbol& symbol);

/// Whether the ledger lines of neighbours can meet.
bool shareLedgerLines(const Symbol& left, const Symbol& right);

}  // namespace notation
