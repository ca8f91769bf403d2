#include "widgets/colour_button.h"

#include "widgets/colour_face.h"

#include <QPainter>

namespace {

constexpr QRgb kAvailable = qRgb(128, 255, 128);
constexpr QRgb kAvailableMark = qRgb(0, 96, 0);
constexpr QRgb kExcluded = qRgb(255, 0, 0);
constexpr QRgb kExcludedMark = qRgb(255, 255, 255);

}  // namespace

ColourButton::ColourButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ColourButton::setColours(QRgb background, QRgb text) {
    background_ = background;
    text_ = text;
    update();
}

void ColourButton::showAvailable(bool available) {
    mark_ = available ? Mark::Tick : Mark::Cross;
    if (available)
        setColours(kAvailable, kAvailableMark);
    else
        setColours(kExcluded, kExcludedMark);
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
    const QBrush face(colour_face::hovered(*this, background()));
    colour_face::paint(painter, *this, background(), isDown() ? QBrush(Qt::NoBrush) : face);
    const QColor textColour =
        isDown() ? palette().color(QPalette::WindowText) : QColor::fromRgb(text_);
    painter.setPen(textColour);
    painter.drawText(rect(), Qt::AlignCenter, text());
    paintMark(painter, QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), mark_, textColour);
    colour_face::paintFocus(painter, *this);
}
