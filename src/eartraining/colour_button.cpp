#include "eartraining/colour_button.h"

#include <QPainter>

namespace {

constexpr double kCorner = 3;
constexpr int kRimDarkness = 150;    ///< of the ground, in percent
constexpr int kHoverDarkness = 106;  ///< likewise

}  // namespace

ColourButton::ColourButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ColourButton::setColours(ear_colours::Rgb ground, ear_colours::Rgb text) {
    ground_ = ground;
    text_ = text;
    update();
}

void ColourButton::showAvailable(bool available) {
    mark_ = available ? Mark::Tick : Mark::Cross;
    if (available)
        setColours(ear_colours::kAvailable, ear_colours::kAvailableMark);
    else
        setColours(ear_colours::kExcluded, ear_colours::kExcludedMark);
}

QSize ColourButton::sizeHint() const {
    const int line = fontMetrics().height();
    return {fontMetrics().horizontalAdvance(text()) + line, qRound(lines_ * line)};
}

void ColourButton::enterEvent(QEnterEvent* /*event*/) {
    update();
}

void ColourButton::leaveEvent(QEvent* /*event*/) {
    update();
}

void ColourButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor face = underMouse() ? ground().darker(kHoverDarkness) : ground();
    painter.setBrush(isDown() ? QBrush(Qt::NoBrush) : QBrush(face));
    painter.setPen(ground().darker(kRimDarkness));
    painter.drawRoundedRect(edge, kCorner, kCorner);
    const QColor ink = isDown() ? palette().color(QPalette::WindowText) : QColor::fromRgb(text_);
    painter.setPen(ink);
    painter.drawText(rect(), Qt::AlignCenter, text());
    paintMark(painter, edge, mark_, ink);
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(edge.adjusted(1, 1, -1, -1), kCorner, kCorner);
}
