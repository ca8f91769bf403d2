#pragma once

#include "composer/score/spelling.h"
#include "composer/score/written_value.h"
#include "core/letter.h"

#include <optional>
#include <vector>

class Melody;

namespace score {

/// So many beats of a value in a bar: 6 and 8 for 6/8.
struct Metre {
    int beats = 4;
    int beatValue = 4;

    int units() const { return beats * 4 * kUnitsPerQuarter / beatValue; }
    bool operator==(const Metre&) const = default;
};

/// What a user can choose between.
constexpr std::array<Metre, 4> kMetres{{{2, 4}, {3, 4}, {4, 4}, {6, 8}}};

/// The metre, none for music without bars, and the key in which a melody is written.
struct Notation {
    std::optional<Metre> metre = Metre{};
    Key key;

    bool operator==(const Notation&) const = default;
};

inline constexpr Notation kWithoutBars{std::nullopt, {}};

/// A note or a rest on paper: an entry of the melody or, where no single value gives the entry or a
/// bar line divides it, one of those that are tied together.
struct WrittenNote {
    int entry = 0;                          ///< from 0
    pitch::NoteNumber note = pitch::kRest;  ///< 0 for a rest
    Spelling spelling = {};                 ///< of a note
    std::optional<int> accidental = {};     ///< the alteration whose sign stands before it
    WrittenValue value = {};
    bool tiedBack = false;                        ///< to the note before; rests are not tied
    bool tiedOn = false;                          ///< to the note behind
    const letter::EntryLetter* letter = nullptr;  ///< the first of an entry has it
    bool closesEntry = false;                     ///< it is the last of an entry
    bool groupStarts = false;                     ///< of a triplet, which may lack members
    bool groupEnds = false;

    bool isRest() const { return note == pitch::kRest; }
};

struct Bar {
    std::vector<WrittenNote> notes;
};

/// An entry that cannot be written exactly.
struct Unwritable {
    enum class Reason {
        Duration,  ///< no values give it
        BarLine,   ///< no values give a part that a bar line leaves of it
        Letter,    ///< nobody knows how it is played
        Length,    ///< the melody is too long with it
    };

    int entry = 0;  ///< from 0
    Reason reason = Reason::Duration;
};

/// A melody as notation writes it, which neither changes the melody nor is stored with it. The last
/// bar may be short. Without a metre there is one bar.
struct BarView {
    Notation notation;
    std::vector<Bar> bars;

    /// By their entries. If there are any there are no bars.
    std::vector<Unwritable> unwritable;
};

BarView barsOf(const Melody& melody, const Notation& notation);

}  // namespace score
