#include "widgets/pixel_grid.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace pixel_grid {

qreal pixel(const QPainter& painter) {
    return 1 / painter.deviceTransform().m11();
}

QRectF snapped(const QPainter& painter, const QRectF& rect) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(rect);
    const QPointF topLeft(std::round(device.left()), std::round(device.top()));
    const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
    return toDevice.inverted().mapRect(QRectF(topLeft, bottomRight));
}

qreal thickness(const QPainter& painter, qreal line) {
    const qreal unit = pixel(painter);
    return std::max<qreal>(1, std::round(line / unit)) * unit;
}

QRectF inside(const QPainter& painter, const QRectF& rect, qreal line) {
    const qreal half = thickness(painter, line) / 2;
    return snapped(painter, rect).adjusted(half, half, -half, -half);
}

}  // namespace pixel_grid
