#include "widgets/key_button.h"

#include "widgets/colour_face.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr double kSizeInLines = 1.6;
constexpr double kTextScale = 1.3;
constexpr int kDownDarkness = 125;  ///< of the background, in percent

}  // namespace

KeyButton::KeyButton(QWidget* parent) : QPushButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    showOpen(false);
}

void KeyButton::showOpen(bool open) {
    background_ = open ? kOpen : kClosed;
    setText(open ? QStringLiteral("-") : QStringLiteral("+"));
    update();
}

QSize KeyButton::sizeHint() const {
    const int side = qRound(kSizeInLines * fontMetrics().height());
    return {side, side};
}

bool KeyButton::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        update();
    return QPushButton::event(event);
}

void KeyButton::paintEvent(QPaintEvent* /*event*/) {
    const QColor background = QColor::fromRgb(background_);
    QPainter painter(this);
    colour_face::paint(
        painter, *this, background,
        isDown() ? background.darker(kDownDarkness) : colour_face::hovered(*this, background));

    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * kTextScale);
    large.setBold(true);
    painter.setFont(large);
    painter.setPen(Qt::black);
    painter.drawText(rect(), Qt::AlignCenter, text());
    colour_face::paintFocus(painter, *this);
}
