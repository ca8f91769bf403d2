#include "widgets/colour_face.h"

#include <QAbstractButton>
#include <QPainter>

namespace colour_face {
namespace {

constexpr double kCorner = 3;
constexpr int kRimDarkness = 150;    ///< of the background, in percent
constexpr int kHoverDarkness = 106;  ///< likewise

QRectF edgeOf(const QAbstractButton& button) {
    return QRectF(button.rect()).adjusted(0.5, 0.5, -0.5, -0.5);
}

}  // namespace

QColor hovered(const QAbstractButton& button, const QColor& background) {
    return button.underMouse() ? background.darker(kHoverDarkness) : background;
}

void paint(QPainter& painter, const QAbstractButton& button, const QColor& background,
           const QBrush& face) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(face);
    painter.setPen(background.darker(kRimDarkness));
    painter.drawRoundedRect(edgeOf(button), kCorner, kCorner);
}

void paintFocus(QPainter& painter, const QAbstractButton& button) {
    if (!button.hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(button.palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(edgeOf(button).adjusted(1, 1, -1, -1), kCorner, kCorner);
}

}  // namespace colour_face
