#pragma once

class QAbstractButton;
class QBrush;
class QColor;
class QPainter;

/// Painting functions of flat buttons with a background colour of their own.
namespace colour_face {

/// The background colour, darker while the mouse is over the button.
QColor hovered(const QAbstractButton& button, const QColor& background);

/// Fills the button with a brush and draws an edge that is darker than its background.
void paint(QPainter& painter, const QAbstractButton& button, const QColor& background,
           const QBrush& face);

/// Draws a frame around a button that has the focus.
void paintFocus(QPainter& painter, const QAbstractButton& button);

}  // namespace colour_face
