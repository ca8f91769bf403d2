#include "widgets/column_scroll_area.h"

#include "widgets/appearance.h"

#include <QKeyEvent>
#include <QLayout>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int kLeastLines = 6;  ///< of text that are in view at least
constexpr int kMenuLines = 2;   ///< what a menu bar above may take
constexpr int kBarGap = 4;      ///< pixels beside the bar

}  // namespace

ColumnScrollArea::ColumnScrollArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ColumnScrollArea::keepBarFree);
    keepBarFree();
}

void ColumnScrollArea::setAsksForAll(bool on) {
    asksForAll_ = on;
    setHorizontalScrollBarPolicy(on ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    keepBarFree();
}

void ColumnScrollArea::makeRoom() {
    QMetaObject::invokeMethod(this, &ColumnScrollArea::enlargeWindow, Qt::QueuedConnection);
}

void ColumnScrollArea::enlargeWindow() {
    QWidget& top = *window();
    const int missing = verticalScrollBar()->maximum();
    if (missing == 0 || top.isMaximized() || top.isFullScreen())
        return;
    const QRect room = appearance::roomOnScreen(top);
    const int height = std::min(top.height() + missing, room.height());
    if (height <= top.height())
        return;
    const int below = top.y() + height - room.y() - room.height();
    if (below > 0)
        top.move(top.x(), std::max(room.y(), top.y() - below));
    top.resize(top.width(), height);
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
    const QSize least = leastSize();
    return asksForAll_ ? least.boundedTo(roomBelowMenu()) : least;
}

bool ColumnScrollArea::lacksRoom() const {
    return asksForAll_ && minimumSizeHint() != leastSize();
}

/// Without regard to the screen.
QSize ColumnScrollArea::leastSize() const {
    const QSize content = widget() ? widget()->minimumSizeHint() : QSize();
    const int least = kLeastLines * fontMetrics().height();
    return {widthFor(content.width()), asksForAll_ ? std::max(least, content.height()) : least};
}

QSize ColumnScrollArea::roomBelowMenu() const {
    return appearance::roomOnScreen(*window()).size() -
           QSize(0, kMenuLines * fontMetrics().height());
}

/// The column changes its size when its controls do.
bool ColumnScrollArea::eventFilter(QObject* target, QEvent* event) {
    const bool handled = QScrollArea::eventFilter(target, event);
    if (target == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        fitColumn();
    }
    return handled;
}

void ColumnScrollArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fitColumn();
}

/// The keys of a column that is the whole window are the window's.
void ColumnScrollArea::keyPressEvent(QKeyEvent* event) {
    if (asksForAll_)
        event->ignore();
    else
        QScrollArea::keyPressEvent(event);
}

/// The toolkit would make a column with wrapped texts as high as it likes to be, and scroll it
/// where it could be lower.
void ColumnScrollArea::fitColumn() {
    if (!widget())
        return;
    const QSize room = viewport()->size();
    QSize least = widget()->minimumSizeHint();
    const QLayout* layout = widget()->layout();
    if (!asksForAll_ && layout && layout->hasHeightForWidth())
        least.setHeight(layout->minimumHeightForWidth(room.width()));
    widget()->resize(room.expandedTo(least));
}

void ColumnScrollArea::keepBarFree() {
    const bool bar = verticalScrollBar()->maximum() > 0;
    setViewportMargins(0, 0, bar ? barGap() : barRoom(), 0);
}

/// A column that is the whole window has margins of its own.
int ColumnScrollArea::barGap() const {
    return asksForAll_ ? 0 : kBarGap;
}

int ColumnScrollArea::barRoom() const {
    return barGap() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

int ColumnScrollArea::widthFor(int content) const {
    return content + barRoom();
}
