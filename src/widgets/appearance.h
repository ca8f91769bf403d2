#pragma once

#include <QColor>
#include <QFont>

class QPainter;
class QRect;
class QWidget;

/// Small changes to how a widget looks, alike in every window.
namespace appearance {

/// Enlarges a widget's text; headings and large numbers are bold as well.
void enlargeText(QWidget& widget, double scale, QFont::Weight weight = QFont::Bold);

/// Has the layout retain a widget's place while it is hidden.
void keepPlace(QWidget& widget);

/// The screen area for a window, on its parent's screen or its own, less frame and title bar.
QRect roomOnScreen(const QWidget& window);

/// The rounded card behind a stave or a page, filled with the base colour and thinly outlined;
/// the outline shows the focus.
constexpr double kCardCorner = 10;
QColor cardEdge(const QWidget& widget);
void paintCard(QPainter& painter, const QWidget& widget);

/// A colour laid over another: `share` of it, 0..1, and the rest of what lies under it.
QColor mixed(const QColor& over, const QColor& under, double share);

}  // namespace appearance
