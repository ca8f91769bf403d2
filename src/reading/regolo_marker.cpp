#include "reading/regolo_marker.h"

#include "reading/staff_step.h"
#include "widgets/engraving.h"

#include <QPainter>

namespace {

constexpr double kDisabledOpacity = 0.35;

}  // namespace

RegoloMarker::RegoloMarker(int step, QWidget* parent) : QWidget(parent), step_(step) {
    setObjectName(QStringLiteral("m%1").arg(step));
    setAccessibleName(staff_step::placeInWords(step));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setEnabled(false);
}

void RegoloMarker::setTick(const QRectF& tick) {
    tick_ = tick;
    setGeometry(tick.toAlignedRect().adjusted(-1, -1, 1, 1));
    update();
}

void RegoloMarker::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.translate(-pos());
    const QWidget& ruler = *parentWidget();
    painter.setPen(ruler.palette().color(QPalette::Highlight));
    painter.setOpacity(ruler.isEnabled() ? 1 : kDisabledOpacity);
    engraving::fillOnPixels(painter, tick_);
}
