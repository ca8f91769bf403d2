#pragma once

#include "composer/staff/composer_staff_layout.h"
#include "composer/staff/staff_entry.h"
#include "widgets/engraving.h"

#include <QtGlobal>

class MusicFont;
class QPainter;

/// Paints the staves and the entries of the composer's staff, in the colour of the painter's pen.
namespace composer_staff_painter {

/// The two staves on the widget.
struct Staves {
    engraving::Stave treble;
    engraving::Stave bass;

    const engraving::Stave& of(composer_staff_layout::System system) const {
        return system == composer_staff_layout::System::Treble ? treble : bass;
    }
    qreal space() const { return treble.space; }
};

/// The staves moved onto whole device pixels.
Staves onPixels(const QPainter& painter, const Staves& staves);

/// Where the signs end that begin a system, in staff spaces from its left.
constexpr double kClefRoom = 4.4;

/// Lines, brace and clefs.
void drawSystem(QPainter& painter, const MusicFont& font, const Staves& staves);

/// An entry ready to be painted.
struct Engraved {
    staff_entry::Entry entry;
    staff_entry::Figure figure;
    composer_staff_layout::Cell cell;
    composer_staff_layout::System system = composer_staff_layout::System::Treble;
};

/// `left` is the left of the entry's cell.
void drawEntry(QPainter& painter, const MusicFont& font, const Staves& staves, qreal left,
               const Engraved& engraved);

}  // namespace composer_staff_painter
