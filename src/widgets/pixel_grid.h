#pragma once

#include <QRectF>

class QPainter;

/// Places lines and edges on whole pixels of the screen, also where it shows a unit of the window
/// as 1.25 or 1.5 of them: a line between two pixels would be pale, and thinner ones vanish.
namespace pixel_grid {

/// The size of a pixel of the screen, in units of the window.
qreal pixel(const QPainter& painter);

/// The rectangle with its edges moved to pixels, so that neighbours still meet.
QRectF snapped(const QPainter& painter, const QRectF& rect);

/// The width of a line that is that thick, in whole pixels and at least one.
qreal thickness(const QPainter& painter, qreal line);

/// Where the middle of a line runs that is drawn inside of the rectangle's edges.
QRectF inside(const QPainter& painter, const QRectF& rect, qreal line);

}  // namespace pixel_grid
