#pragma once

class QPainter;
class QRectF;

/// The engraved pictures of the entry palette. They fill a rectangle in the colour of the
/// painter's pen.
namespace entry_pictures {

/// A note symbol, by its index in `note_values::kAll`.
void drawSymbol(QPainter& painter, const QRectF& rect, int symbol);

/// An attribute button, by its index in `kAttributeButtons`.
void drawAttribute(QPainter& painter, const QRectF& rect, int attribute);

}  // namespace entry_pictures
