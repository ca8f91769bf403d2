#include "widgets/colour_face.h"

#include "widgets/pixel_grid.h"

#include <QAbstractButton>
#include <QPainter>

namespace colour_face {
namespace {

constexpr double kCorner = 3;
constexpr double kFocusLine = 3;
constexpr int kRimDarkness = 180;    ///< of the background, in percent
constexpr int kHoverDarkness = 106;  ///< likewise

}  // namespace

QColor hovered(const QAbstractButton& button, const QColor& background) {
    return button.underMouse() ? background.darker(kHoverDarkness) : background;
}

void paint(QPainter& painter, const QAbstractButton& button, const QColor& background,
           const QBrush& face) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(face);
    painter.setPen(QPen(background.darker(kRimDarkness), pixel_grid::thickness(painter, 1)));
    painter.drawRoundedRect(pixel_grid::inside(painter, button.rect(), 1), kCorner, kCorner);
}

void paintFocus(QPainter& painter, const QAbstractButton& button) {
    if (!button.hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(button.palette().color(QPalette::Highlight), kFocusLine));
    painter.drawRoundedRect(pixel_grid::inside(painter, button.rect(), kFocusLine), kCorner,
                            kCorner);
}

}  // namespace colour_face
