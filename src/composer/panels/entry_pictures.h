#pragma once

class QPainter;
class QRectF;

/// The engraved pictures of the entry palette. They fill a rectangle in the colour of the
/// painter's pen.
namespace entry_pictures {

/// A note symbol 0..6, from the semibreve to the semibiscroma.
void drawSymbol(QPainter& painter, const QRectF& rect, int symbol);

/// An attribute 0..5, as `EntrySettings::Attribute` counts them, on a note.
void drawAttribute(QPainter& painter, const QRectF& rect, int attribute);

}  // namespace entry_pictures
