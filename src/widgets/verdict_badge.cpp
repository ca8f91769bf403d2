#include "widgets/verdict_badge.h"

#include "platform/user_text.h"
#include "widgets/mark_painting.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace {

/// Dark enough for a white mark on them, and for light buttons under them.
constexpr QRgb kRight = qRgb(0, 122, 40);
constexpr QRgb kWrong = qRgb(196, 18, 32);
constexpr QRgb kRightOnDark = qRgb(92, 214, 122);
constexpr QRgb kWrongOnDark = qRgb(255, 116, 116);

/// In pixels.
constexpr double kFrame = 4;
constexpr double kCorner = 4;
constexpr double kRim = 1.5;  ///< the white line around everything, for dark backgrounds

constexpr double kMarkLines = 1.3;     ///< the side of the corner's mark, in lines of text
constexpr double kMarkShare = 0.6;     ///< at most this much of the control's height
constexpr double kRoundedShare = 0.3;  ///< the corners of a filled shape, of its shorter side

QColor colourOf(Verdict verdict) {
    return QColor::fromRgb(verdict == Verdict::Right ? kRight : kWrong);
}

Mark markOf(Verdict verdict) {
    return verdict == Verdict::Right ? Mark::Tick : Mark::Cross;
}

void paintFilled(QPainter& painter, const QRectF& rect, double corner, Verdict verdict) {
    const double rim = kRim / 2;
    painter.setBrush(colourOf(verdict));
    painter.setPen(QPen(Qt::white, kRim));
    painter.drawRoundedRect(rect.adjusted(rim, rim, -rim, -rim), corner, corner);
    paintMark(painter, rect, markOf(verdict), Qt::white);
}

}  // namespace

VerdictBadge::VerdictBadge(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

QColor VerdictBadge::inkOf(Verdict verdict, const QPalette& palette) {
    if (palette.color(QPalette::Base).lightness() >= 128)
        return colourOf(verdict);
    return QColor::fromRgb(verdict == Verdict::Right ? kRightOnDark : kWrongOnDark);
}

void VerdictBadge::showOver(QWidget& control, Verdict verdict) {
    show(control, control.rect(), Shape::Frame, verdict);
}

void VerdictBadge::showAt(QWidget& widget, const QRect& place, Verdict verdict) {
    show(widget, place, Shape::Filled, verdict);
}

void VerdictBadge::show(QWidget& parent, const QRect& place, Shape shape, Verdict verdict) {
    shape_ = shape;
    verdict_ = verdict;
    setAccessibleName(verdict == Verdict::Right ? UserText::tr("Risposta esatta")
                                                : UserText::tr("Risposta errata"));
    if (parentWidget() != &parent)
        setParent(&parent);
    setGeometry(place);
    raise();
    QWidget::show();
    update();
}

void VerdictBadge::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (shape_ == Shape::Filled) {
        paintFilled(painter, rect(), kRoundedShare * std::min(width(), height()), verdict_);
        return;
    }
    const double outer = kFrame / 2;
    painter.setPen(QPen(colourOf(verdict_), kFrame));
    painter.drawRoundedRect(QRectF(rect()).adjusted(outer, outer, -outer, -outer), kCorner,
                            kCorner);
    const double inner = kFrame + kRim / 2;
    painter.setPen(QPen(Qt::white, kRim));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inner, inner, -inner, -inner), kCorner / 2,
                            kCorner / 2);
    paintCorner(painter);
}

/// The mark stands in the upper right corner, beside the control's text.
void VerdictBadge::paintCorner(QPainter& painter) const {
    const double side = std::min(kMarkLines * fontMetrics().height(), kMarkShare * height());
    paintFilled(painter, QRectF(width() - side, 0, side, side), kCorner, verdict_);
}
