#pragma once

#include "composer/notation/system_layout.h"
#include "widgets/engraving.h"

#include <QtGlobal>

class MusicFont;
class QPainter;

/// Paints systems of engraved music, on any page, in the colour of the painter's pen.
namespace score_painter {

/// Where a system stands on the painter's page.
struct Place {
    qreal left = 0;   ///< of the staves; the brace stands further left
    qreal top = 0;    ///< of the system's room
    qreal width = 0;  ///< of the staves
    qreal space = 1;  ///< of the staves' lines

    qreal x(double spaces) const { return left + spaces * space; }
};

/// What the brace takes on the left, in staff spaces.
constexpr double kBraceRoom = 2.2;

engraving::Stave staveOf(const notation::System& system, notation::Staff staff, const Place& place);

/// Lines, brace, clefs, key, metre and bar lines.
void drawStaves(QPainter& painter, const MusicFont& font, const notation::System& system,
                const Place& place);

/// The same of the treble staff alone.
void drawTrebleStaff(QPainter& painter, const MusicFont& font, const notation::System& system,
                     const Place& place);

/// Notes and rests with all their signs.
void drawSymbols(QPainter& painter, const MusicFont& font, const notation::System& system,
                 const Place& place);

/// The line that ends a melody, at the right end of the staves.
void drawEnd(QPainter& painter, const notation::System& system, const Place& place, bool withBass);

}  // namespace score_painter
