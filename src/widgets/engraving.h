#pragma once

#include "core/grand_staff.h"
#include "core/note_values.h"

#include <QtGlobal>

class MusicFont;
class QPainter;
class QRectF;

/// Painting functions of music engraving. All draw in the colour of the painter's pen. Lines and
/// stems are put on whole device pixels, so that they are crisp at every scale of the screen; for
/// this the painter may be moved and scaled, but not turned.
namespace engraving {

enum class Clef { G, F };
enum class Accidental { None, Flat, Natural, Sharp };
using note_values::Duration;

using grand_staff::kTopLine;
constexpr int kMiddleLine = 4;

/// Five lines on the painter's page. A position on them counts half staff spaces from the bottom
/// line: 0 is that line, 8 the top one, -2 the first ledger line below.
struct Stave {
    qreal left = 0;
    qreal right = 0;
    qreal bottomLine = 0;  ///< y of the middle of the bottom line
    qreal space = 0;       ///< from one line to the next

    constexpr qreal y(int position) const { return bottomLine - position * space / 2; }
};

struct Note {
    int position = 0;
    Duration duration = Duration::Quarter;
    Accidental accidental = Accidental::None;
    int dots = 0;
};

/// The largest staff space up to `space` that is a whole number of device pixels, at least one.
qreal wholePixelSpace(qreal space, qreal devicePixelRatio);

/// The stave moved by less than a pixel, so that its lines cover whole device pixels.
Stave onPixels(const QPainter& painter, Stave stave);

/// The position where the stem of a note ends: 3 1/2 spaces away, or the middle line if that is
/// further.
int stemEnd(int position);

/// Fills the rectangle, at least one pixel wide and high, up to whole device pixels.
void fillOnPixels(QPainter& painter, const QRectF& rect);

void drawLines(QPainter& painter, const Stave& stave);
void drawBarline(QPainter& painter, const Stave& upper, const Stave& lower, qreal x);

/// A brace to the left of `right`, from the top of one stave to the bottom of another.
void drawBrace(QPainter& painter, const MusicFont& font, const Stave& upper, const Stave& lower,
               qreal right);
void drawClef(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x, Clef clef);

/// The two staves of a system with their clefs, barline and brace.
void drawGrandStaff(QPainter& painter, const MusicFont& font, const Stave& treble,
                    const Stave& bass);

/// A note with its stem, flags, dots, accidental and ledger lines; `x` is the head's left edge.
void drawNote(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              const Note& note);
void drawRest(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              Duration duration, int dots = 0);

/// The width of a note's head, in staff spaces.
qreal headWidth(Duration duration);

/// How far a note reaches to the left and to the right of its `x`, in staff spaces.
struct Extent {
    qreal left = 0;
    qreal right = 0;
};
Extent extentOf(const Note& note);

/// The width of a rest with its dots, in staff spaces.
qreal restWidth(Duration duration, int dots = 0);

constexpr bool stemGoesUp(int position) {
    return position < kMiddleLine;
}

/// The sign to the left of a head whose left edge is `x`.
void drawAccidental(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                    int position, Accidental accidental);

/// An articulation sign at a note's head, on the side away from its stem; when the note is tied to
/// the next one, it stands outside the tie.
void drawArticulation(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note, const glyph_table::ArticulationSign& sign,
                      bool tied = false);

/// A tie between two heads with the left edges `from` and `to`, on the side away from the stems.
void drawTie(QPainter& painter, const Stave& stave, qreal from, qreal to, const Note& note);

/// The position of the middle of a small sign that stands outside the stave, beyond a note's stem
/// or above a rest.
qreal signPosition(const Note& note);
constexpr qreal kRestSignPosition = kTopLine + 3;

/// The small "3" of a triplet.
void drawTripletSign(QPainter& painter, const MusicFont& font, const Stave& stave, qreal middle,
                     qreal position);

}  // namespace engraving
