#pragma once

#include <QColor>
#include <QFont>

class QPainter;
class QRect;
class QWidget;

/// Small changes to how a widget looks, alike in every window.
namespace appearance {

/// Enlarges a widget's text; a heading or a number that is to be seen from afar is bold as well.
void enlargeText(QWidget& widget, double scale, QFont::Weight weight = QFont::Bold);

/// Lets a widget keep its place in the layout while it is hidden.
void keepPlace(QWidget& widget);

/// Tints a scroll bar that has the focus, which the style does not show.
void tintWithFocus(QWidget& bar);

/// Where a window may stand on its parent's screen, or its own: less a frame and a title bar.
QRect roomOnScreen(const QWidget& window);

/// The light card that a stave or a printed page stands on, with its thin edge.
constexpr double kCardCorner = 10;
QColor cardEdge(const QWidget& widget);
void paintCard(QPainter& painter, const QWidget& widget);

/// A colour laid over another: `share` of it, 0..1, and the rest of what lies under it.
QColor mixed(const QColor& over, const QColor& under, double share);

}  // namespace appearance
