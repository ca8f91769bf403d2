#include "widgets/piano_key_painting.h"

#include "widgets/appearance.h"
#include "widgets/pixel_grid.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>

namespace piano_key_painting {
namespace {

constexpr QColor kPressed(192, 192, 255);
constexpr QColor kIvory(253, 253, 250);
constexpr QColor kIvoryInTheDark(226, 226, 221);
constexpr QColor kEbony(34, 34, 38);
constexpr QColor kEbonyFace(66, 66, 72);
constexpr QColor kMiddleCMark(64, 105, 190);

/// In pixels.
constexpr double kNaturalCorner = 3;
constexpr double kSharpCorner = 2;
constexpr double kSharpBevel = 2;
constexpr double kCursorMargin = 3;
constexpr double kCursorLine = 2;

constexpr double kHovered = 0.35;  ///< of the pressed key's colour

constexpr double kSharpFront = 0.1;     ///< the share of a sharp's length that is its front
constexpr double kNaturalFront = 0.68;  ///< where the part of a natural below the sharps begins

/// Square at the top, rounded at the bottom.
QPainterPath keyShape(const QRectF& rect, double corner) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(rect, corner, corner);
    path.addRect(rect.adjusted(0, 0, 0, -2 * corner));
    return path;
}

QColor faceColour(const QColor& up, Look look) {
    switch (look) {
        case Look::Pressed:
            return kPressed;
        case Look::Hovered:
            return appearance::mixed(kPressed, up, kHovered);
        case Look::Up:
            break;
    }
    return up;
}

}  // namespace

void paintNatural(QPainter& painter, const QRectF& key, Look look, bool dark) {
    const QRectF face =
        pixel_grid::snapped(painter, key).adjusted(0, 0, -pixel_grid::pixel(painter), 0);
    painter.fillPath(keyShape(face, kNaturalCorner),
                     faceColour(dark ? kIvoryInTheDark : kIvory, look));
}

void paintSharp(QPainter& painter, const QRectF& key, Look look) {
    const QRectF body = pixel_grid::snapped(painter, key);
    painter.fillPath(keyShape(body, kSharpCorner), kEbony);
    const double front = look == Look::Pressed ? 0.5 * kSharpFront : kSharpFront;
    const QRectF top = pixel_grid::snapped(
        painter, body.adjusted(kSharpBevel, 0, -kSharpBevel, -front * body.height()));
    painter.fillPath(keyShape(top, kSharpCorner), faceColour(kEbonyFace, look));
}

void paintMiddleC(QPainter& painter, const QRect& square) {
    painter.fillRect(pixel_grid::snapped(painter, square), kMiddleCMark);
}

void paintCursor(QPainter& painter, const QRectF& key, bool sharp, const QColor& colour) {
    QRectF ring = key.adjusted(kCursorMargin, kCursorMargin, -kCursorMargin, -kCursorMargin);
    if (!sharp)
        ring.setTop(key.top() + kNaturalFront * key.height());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, kCursorLine));
    painter.drawRoundedRect(ring, kCursorMargin, kCursorMargin);
}

}  // namespace piano_key_painting
