#pragma once

#include "core/engraving_measures.h"

#include <QtGlobal>

class MusicFont;
class QPainter;
class QRectF;

/// Painting functions of music engraving. All draw in the colour of the painter's pen. Lines and
/// stems are put on whole device pixels, so that they are crisp at every scale of the screen; for
/// this the painter may be moved and scaled, but not turned.
namespace engraving {

enum class Clef { G, F };

/// Five lines on the painter's page.
struct Stave {
    qreal left = 0;
    qreal right = 0;
    qreal bottomLine = 0;  ///< y of the middle of the bottom line
    qreal space = 0;       ///< from one line to the next

    constexpr qreal y(qreal position) const { return bottomLine - position * space / 2; }
};

/// The largest staff space up to `space` that is a whole number of device pixels, at least one.
qreal wholePixelSpace(qreal space, qreal devicePixelRatio);

/// The stave moved by less than a pixel, so that its lines cover whole device pixels.
Stave onPixels(const QPainter& painter, Stave stave);

/// Fills the rectangle, at least one pixel wide and high, up to whole device pixels.
void fillOnPixels(QPainter& painter, const QRectF& rect);

void drawLines(QPainter& painter, const Stave& stave);
void drawBarline(QPainter& painter, const Stave& upper, const Stave& lower, qreal x);

/// A thin and a thick line, which end a piece of music at `right` and are so many staff spaces
/// wide.
constexpr double kFinalBarlineWidth = glyph_table::kThinBarlineThickness +
                                      glyph_table::kBarlineSeparation +
                                      glyph_table::kThickBarlineThickness;
void drawFinalBarline(QPainter& painter, const Stave& upper, const Stave& lower, qreal right);

/// A brace to the left of `right`, from the top of one stave to the bottom of another.
void drawBrace(QPainter& painter, const MusicFont& font, const Stave& upper, const Stave& lower,
               qreal right);
void drawClef(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x, Clef clef);

/// A staff with its clef.
void drawStaff(QPainter& painter, const MusicFont& font, const Stave& stave, Clef clef);

/// The two staves of a system with their clefs, barline and brace.
void drawGrandStaff(QPainter& painter, const MusicFont& font, const Stave& treble,
                    const Stave& bass);

/// A note with its stem, flags, dots, accidental and ledger lines; `x` is the head's left edge.
void drawNote(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              const Note& note);

/// A note without flags whose stem ends at a beam; the answer is the stem, on whole pixels.
QRectF drawBeamedNote(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note, qreal stemEnd);
void drawRest(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
              Duration duration, int dots = 0);

/// The sign to the left of a head whose left edge is `x`.
void drawAccidental(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                    int position, Accidental accidental);

/// A key signature of so many sharps, or flats if it is negative, to the right of `x`.
void drawKeySignature(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      Clef clef, int fifths);

/// The numbers of a metre above each other, in the column of so many staff spaces right of `x`.
constexpr double kMetreWidth = 1.8;
void drawMetre(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x, int beats,
               int beatValue);

/// An articulation sign at a note's head, on the side away from its stem.
void drawArticulation(QPainter& painter, const MusicFont& font, const Stave& stave, qreal x,
                      const Note& note, const glyph_table::ArticulationSign& sign);

/// The small "3" of a triplet.
void drawTripletSign(QPainter& painter, const MusicFont& font, const Stave& stave, qreal middle,
                     qreal position);

}  // namespace engraving
