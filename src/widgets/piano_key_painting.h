#pragma once

class QColor;
class QPainter;
class QRect;
class QRectF;

/// How the keys of a piano keyboard look. They stand on whole pixels at any scale.
namespace piano_key_painting {

/// Up, under the mouse, or down.
enum class Look { Up, Hovered, Pressed };

void paintNatural(QPainter& painter, const QRectF& key, Look look, bool dark);
void paintSharp(QPainter& painter, const QRectF& key, Look look);

/// The blue square on middle C.
void paintMiddleC(QPainter& painter, const QRect& square);

/// The ring around the part of a key that no other one lies over.
void paintCursor(QPainter& painter, const QRectF& key, bool sharp, const QColor& colour);

}  // namespace piano_key_painting
