#pragma once

#include "core/grand_staff.h"
#include "core/note_values.h"

/// How notes and rests are engraved, and how much room they take. Lengths along a stave are in
/// staff spaces. A position on a stave counts half staff spaces from the bottom line: 0 is that
/// line, 8 the top one, -2 the first ledger line below.
namespace engraving {

enum class Accidental { None, Flat, Natural, Sharp, DoubleSharp };
enum class Stem { ByPosition, Up, Down };
using note_values::Duration;

using grand_staff::kTopLine;
constexpr int kMiddleLine = 4;

struct Note {
    int position = 0;
    Duration duration = Duration::Quarter;
    Accidental accidental = Accidental::None;
    int dots = 0;
    Stem stem = Stem::ByPosition;
    bool beamed = false;                                         ///< it has no flags
    double ledgerExtension = glyph_table::kLedgerLineExtension;  ///< beyond its head
};

constexpr bool stemGoesUp(const Note& note) {
    return note.stem == Stem::ByPosition ? note.position < kMiddleLine : note.stem == Stem::Up;
}

constexpr bool isFlagged(Duration duration) {
    return duration >= Duration::Eighth;
}

/// The position where the stem of a note ends: 3 1/2 spaces away, with three or more flags 4, or
/// the middle line if that is further.
int stemEnd(const Note& note);

/// The ledger lines that a head on a position needs.
int ledgerLines(int position);

/// The glyph of an accidental that is not `None`.
glyph_table::Glyph glyphOf(Accidental accidental);

/// The width of a note's head, in staff spaces.
double headWidth(Duration duration);

/// How far a note reaches to the left and to the right of its head's left edge, in staff spaces.
struct Extent {
    double left = 0;
    double right = 0;
};
Extent extentOf(const Note& note);

/// From the left edge of a head to that of its accidental's right edge, and to where its dots
/// begin.
double accidentalGap(int position);
double dotsStart(const Note& note);

/// The first dot stands so far behind a head or a rest, and each other one behind the one before.
constexpr double kDotGap = 0.4;
constexpr double kDotDistance = 0.6;

/// From one sign of a key signature to the next one, in staff spaces.
constexpr double kKeySignStep = 1.15;

/// The width of a rest with its dots, in staff spaces.
double restWidth(Duration duration, int dots = 0);

/// The lowest and the highest position that ink covers.
struct Reach {
    double low = 0;
    double high = 0;
};
Reach reachOf(const Note& note);
Reach headReach(const Note& note);  ///< without the stem
Reach restReach(Duration duration);

/// The line that a rest is set on.
constexpr int restLine(Duration duration) {
    return duration == Duration::Whole ? kMiddleLine + 2 : kMiddleLine;
}

/// The position of the middle of an articulation sign, on the side away from the stem.
int articulationPosition(const Note& note, const glyph_table::ArticulationSign& sign);

/// The curve of a tie between heads on one position. The middle of its stroke stands in a space of
/// the stave, clear of the lines.
struct TieCurve {
    double from = 0;  ///< its left end, in staff spaces from the left edge of the first head
    double to = 0;    ///< its right end, in staff spaces from the left edge of the other head
    double ends = 0;  ///< the position of both
    double middle = 0;
};

/// Over the heads or, if not `above`, under them.
TieCurve tieOverHeads(const Note& first, bool above);

/// Beside the heads and the first one's dots; it leaves the room over the heads to a sign.
TieCurve tieBetweenHeads(const Note& first, bool above);

/// The position of the middle of a small sign that stands outside the stave, beyond a note's stem.
double signPosition(const Note& note);

}  // namespace engraving
