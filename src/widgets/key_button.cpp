#include "widgets/key_button.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr double kSizeInLines = 1.6;
constexpr double kCorner = 3;
constexpr double kTextScale = 1.3;
constexpr int kRimDarkness = 150;    ///< of the ground, in percent
constexpr int kHoverDarkness = 106;  ///< likewise
constexpr int kDownDarkness = 125;   ///< likewise

}  // namespace

KeyButton::KeyButton(QWidget* parent) : QPushButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    showOpen(false);
}

void KeyButton::showOpen(bool open) {
    ground_ = open ? kOpen : kClosed;
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
    const QColor ground = QColor::fromRgb(ground_);
    const int darkness = isDown() ? kDownDarkness : underMouse() ? kHoverDarkness : 100;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(ground.darker(darkness));
    painter.setPen(ground.darker(kRimDarkness));
    painter.drawRoundedRect(edge, kCorner, kCorner);

    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * kTextScale);
    large.setBold(true);
    painter.setFont(large);
    painter.setPen(Qt::black);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(edge.adjusted(1, 1, -1, -1), kCorner, kCorner);
}
