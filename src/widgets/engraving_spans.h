#pragma once

#include "widgets/engraving.h"

#include <QPointF>

/// Painting functions for the signs of music engraving that join several notes. As those of
/// `engraving`, they draw in the colour of the painter's pen.
namespace engraving {

/// A tie with its ends at `left` and `right`.
void drawTie(QPainter& painter, const Stave& stave, qreal left, qreal right, const TieCurve& curve);

/// A tie between two single notes with the left edges `from` and `to`, over or under both heads.
void drawTieOfNotes(QPainter& painter, const Stave& stave, qreal from, qreal to, const Note& note);

/// A beam between two points of its edge at the stems' ends, from which it extends towards the
/// heads: downwards when the stems go up.
void drawBeam(QPainter& painter, const Stave& stave, QPointF from, QPointF to, bool stemsUp);

/// A triplet's bracket with the "3" in its middle, at a position; its ends point to the notes.
void drawTripletBracket(QPainter& painter, const MusicFont& font, const Stave& stave, qreal left,
                        qreal right, qreal position, bool above);

}  // namespace engraving
