#include "widgets/appearance.h"

#include "widgets/pixel_grid.h"

#include <QPainter>
#include <QScreen>
#include <QWidget>

namespace appearance {
namespace {

constexpr double kEdgeShare = 0.2;
constexpr double kFocusThickness = 2;
constexpr QSize kWindowFrame(8, 40);

}  // namespace

void enlargeText(QWidget& widget, double scale, QFont::Weight weight) {
    QFont font = widget.font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    widget.setFont(font);
}

void keepPlace(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

QRect roomOnScreen(const QWidget& window) {
    const QWidget* parent = window.parentWidget();
    const QRect room = (parent ? parent : &window)->screen()->availableGeometry();
    return {room.topLeft(), room.size() - kWindowFrame};
}

QColor cardEdge(const QWidget& widget) {
    return mixed(widget.palette().color(QPalette::Text), widget.palette().color(QPalette::Base),
                 kEdgeShare);
}

void paintCard(QPainter& painter, const QWidget& widget) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(widget.hasFocus() ? QPen(widget.palette().color(QPalette::Highlight),
                                            pixel_grid::thickness(painter, kFocusThickness))
                                     : QPen(cardEdge(widget), pixel_grid::thickness(painter, 1)));
    painter.setBrush(widget.palette().color(QPalette::Base));
    painter.drawRoundedRect(pixel_grid::inside(painter, widget.rect(), 1), kCardCorner,
                            kCardCorner);
}

QColor mixed(const QColor& over, const QColor& under, double share) {
    const auto mix = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {mix(over.red(), under.red()), mix(over.green(), under.green()),
            mix(over.blue(), under.blue())};
}

}  // namespace appearance
