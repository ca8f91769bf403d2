#include "widgets/column_scroll_area.h"

#include <QEvent>
#include <QScrollBar>
#include <QStyle>

namespace {

constexpr int kLeastLines = 6;  ///< of text that are in view at least

}  // namespace

ColumnScrollArea::ColumnScrollArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ColumnScrollArea::keepBarFree);
    keepBarFree();
}

void ColumnScrollArea::reveal(QWidget& control) {
    QMetaObject::invokeMethod(
        this, [this, &control] { ensureWidgetVisible(&control, 0, 0); }, Qt::QueuedConnection);
}

QSize ColumnScrollArea::sizeHint() const {
    const QSize content = widget() ? widget()->sizeHint() : QSize();
    return {widthFor(content.width()), content.height()};
}

QSize ColumnScrollArea::minimumSizeHint() const {
    const int content = widget() ? widget()->minimumSizeHint().width() : 0;
    return {widthFor(content), kLeastLines * fontMetrics().height()};
}

/// The column changes its size when its controls do.
bool ColumnScrollArea::eventFilter(QObject* target, QEvent* event) {
    if (target == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(target, event);
}

void ColumnScrollArea::keepBarFree() {
    const bool bar = verticalScrollBar()->maximum() > 0;
    setViewportMargins(0, 0, bar ? 0 : style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0);
}

int ColumnScrollArea::widthFor(int content) const {
    return content + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}
