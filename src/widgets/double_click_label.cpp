#include "widgets/double_click_label.h"

#include "widgets/double_click.h"

#include <QStyleOptionFrame>
#include <QStylePainter>

namespace {

constexpr int kFrame = 6;

}  // namespace

DoubleClickLabel::DoubleClickLabel(QWidget* parent) : QToolButton(parent) {
    setFocusPolicy(Qt::TabFocus);
    clickByDoubleClick(*this);
}

/// As high with a text as without one.
QSize DoubleClickLabel::sizeHint() const {
    return {QToolButton::sizeHint().width(), fontMetrics().height() + kFrame};
}

void DoubleClickLabel::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.frameShape = QFrame::StyledPanel;
    frame.lineWidth = 1;
    frame.state |= QStyle::State_Sunken;
    painter.drawControl(QStyle::CE_ShapedFrame, frame);
    painter.drawItemText(rect(), Qt::AlignCenter, palette(), isEnabled(), text(),
                         QPalette::WindowText);
    if (!hasFocus())
        return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}
