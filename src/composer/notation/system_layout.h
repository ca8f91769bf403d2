#pragma once

#include "composer/notation/beams.h"
#include "composer/notation/source.h"
#include "composer/notation/symbol.h"
#include "composer/notation/ties.h"

#include <optional>
#include <vector>

/// One system of the melody as engraved music: two staves with as many entries as its width holds.
namespace notation {

/// In staff spaces.
struct Page {
    double width = 80;              ///< of a system, from its first barline to its end
    double endRoom = 0;             ///< left free behind the last entry of the melody
    bool roomForEveryNote = false;  ///< at the last system, above and below
    double view = 0;                ///< the height that is seen at a time, in half spaces
    double fullness = 1;     ///< a system ends where its natural distances take this share of it
    bool fillsLast = false;  ///< the last system is as wide as the others
};

/// Where the signs end that begin a system without a key and a metre, and where its first symbol
/// begins at the earliest.
constexpr double kClefRoom = 4.4;
constexpr double kLead = 5;

/// What stands at the left of a system behind the clefs.
struct Opening {
    int fifths = 0;                     ///< so many sharps, or flats if it is negative
    std::optional<score::Metre> metre;  ///< of the first system
    double metreLeft = kClefRoom;
    double end = kClefRoom;

    bool operator==(const Opening&) const = default;
};

/// The bracket and the "3" over or under the symbols of a triplet.
struct TripletBracket {
    Span symbols;
    Staff staff = Staff::Treble;
    bool above = true;
    double position = 0;
};

/// The sign of a duration that its figure does not show.
struct DurationSign {
    std::size_t symbol = 0;
    double quarters = 0;
    double position = 0;
};

struct ArticulationMark {
    std::size_t symbol = 0;
    glyph_table::ArticulationSign sign;
};

/// Lengths along the staves are in staff spaces from their left, heights in half spaces.
struct System {
    SystemStart start;
    SystemStart next;
    bool last = false;  ///< the melody ends with it
    int readTo = 0;     ///< it depends on no entry from this one on

    std::vector<Symbol> symbols;
    std::vector<Beam> beams;
    std::vector<TripletBracket> triplets;
    std::vector<ArticulationMark> articulations;
    std::vector<Tie> ties;
    std::vector<DurationSign> durationSigns;
    std::vector<double> barLines;  ///< those where a bar ends
    std::optional<int> barNumber;  ///< of the bar in which it starts, from 1
    Opening opening;
    double end = 0;      ///< behind the last symbol
    double natural = 0;  ///< where it would be at natural distances

    double above = 0;  ///< from the treble staff's top line to the highest ink
    double gap = 0;    ///< between the staves
    double below = 0;  ///< from the bass staff's bottom line to the end of the system's room
    double ink = 0;    ///< from the bass staff's bottom line to below its lowest ink

    /// What of `above` and `below` is room for notes that could be written.
    double spareAbove = 0;
    double spareBelow = 0;

    double height() const;
    void giveUpSpareRoom();

    /// Whether it has an entry or a part of it, with its beginning, with its end.
    bool has(int entry) const;
    bool opens(int entry) const;
    bool closes(int entry) const;

    /// The number that stands over its beginning, "(7)" inside of a bar; the first has none.
    QString barNumberText() const;

    /// Whether it lies before an entry.
    bool isBefore(int entry) const { return !symbols.empty() && symbols.back().entry < entry; }

    /// From the top of the system to a staff's bottom line, and to the middle between the staves.
    double bottomLine(Staff staff) const;
    double middle() const;

    /// What an entry of the system takes of its width; between narrow neighbours it ends in the
    /// middle of the gap.
    struct Stretch {
        double left = 0;
        double right = 0;
        double head = 0;  ///< the left edge of its first head
    };
    Stretch stretchOf(int entry) const;
};

System layOutSystem(const Source& source, const SystemStart& start, const Page& page);

/// A single entry on a staff, without a clef, whose first head stands at 0.
System layOutEntry(const staff_entry::Entry& entry, Staff staff, const score::Key& key = {});

}  // namespace notation
