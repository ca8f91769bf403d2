#pragma once

class QAbstractButton;
class QBrush;
class QColor;
class QPainter;

/// The face of a flat button on a ground of its own colour.
namespace colour_face {

/// The ground as it looks under the mouse and away from it.
QColor hovered(const QAbstractButton& button, const QColor& ground);

/// Fills the button within a rim that is darker than its ground.
void paint(QPainter& painter, const QAbstractButton& button, const QColor& ground,
           const QBrush& face);

/// Rings a button that has the focus.
void paintFocus(QPainter& painter, const QAbstractButton& button);

}  // namespace colour_face
