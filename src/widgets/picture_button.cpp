#include "widgets/picture_button.h"

#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace {

constexpr double kSizeInLines = 2.5;
constexpr int kMargin = 3;

}  // namespace

PictureButton::PictureButton(const QString& name, const QString& toolTip, Picture picture,
                             QWidget* parent)
    : QToolButton(parent), picture_(std::move(picture)) {
    setObjectName(name);
    setToolTip(toolTip);
    setAccessibleName(toolTip);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

QSize PictureButton::sizeHint() const {
    const int side = qRound(kSizeInLines * fontMetrics().height());
    return {side, side};
}

/// The highlight is bright in every theme, so the picture on it is always dark.
QColor PictureButton::penColour() const {
    return isChecked() && isEnabled() ? QColor(Qt::black) : palette().color(QPalette::ButtonText);
}

void PictureButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.state.setFlag(QStyle::State_On, false);
    option.state.setFlag(QStyle::State_Raised);
    option.state.setFlag(QStyle::State_HasFocus, false);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    if (isChecked())
        painter.fillRect(rect().adjusted(2, 2, -2, -2), QColor::fromRgb(kHighlight));
    painter.setPen(penColour());
    picture_(painter, QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin));
    if (!hasFocus())
        return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(isChecked() ? QColor(Qt::black) : palette().color(QPalette::Highlight), 1,
                        Qt::DotLine));
    painter.drawRect(rect().adjusted(3, 3, -4, -4));
}
