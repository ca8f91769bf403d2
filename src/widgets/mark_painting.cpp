#include "widgets/mark_painting.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace {

constexpr double kShare = 0.5;  ///< of the rectangle's shorter side
constexpr double kThickness = 0.22;

}  // namespace

void paintMark(QPainter& painter, const QRectF& rect, Mark mark, const QColor& colour) {
    if (mark == Mark::None)
        return;
    const double side = kShare * std::min(rect.width(), rect.height());
    const QPointF middle = rect.center();
    const auto at = [&](double x, double y) { return middle + QPointF(x, y) * (side / 2); };
    painter.setPen(
        QPen(colour, std::max(1.5, kThickness * side), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (mark == Mark::Tick) {
        const std::array tick{at(-1, 0), at(-0.3, 0.8), at(1, -0.8)};
        painter.drawPolyline(tick.data(), static_cast<int>(tick.size()));
    } else {
        painter.drawLine(at(-0.8, -0.8), at(0.8, 0.8));
        painter.drawLine(at(-0.8, 0.8), at(0.8, -0.8));
    }
}
