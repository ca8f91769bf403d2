#include "widgets/verdict_mark.h"

#include <QPainter>

VerdictMark::VerdictMark(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
}

void VerdictMark::setMark(Mark mark, QRgb colour) {
    mark_ = mark;
    colour_ = colour;
    update();
}

QSize VerdictMark::sizeHint() const {
    const int side = qRound(1.5 * fontMetrics().height());
    return {side, side};
}

void VerdictMark::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor::fromRgb(colour_));
    paintMark(painter, rect(), mark_, Qt::white);
}
