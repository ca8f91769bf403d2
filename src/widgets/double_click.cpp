#include "widgets/double_click.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace {

bool isOfLeftButton(const QEvent& event) {
    return static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton;
}

bool isDoubleClick(const QEvent& event) {
    if (event.type() == QEvent::MouseButtonDblClick)
        return isOfLeftButton(event);
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

}  // namespace

DoubleClick::DoubleClick(QWidget& widget, SingleClicks singleClicks)
    : QObject(&widget), singleClicks_(singleClicks) {
    widget.installEventFilter(this);
}

bool DoubleClick::eventFilter(QObject* /*target*/, QEvent* event) {
    if (isDoubleClick(*event)) {
        Q_EMIT doubleClicked();
        return true;
    }
    const bool pressOrRelease =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease;
    if (!pressOrRelease || singleClicks_ == SingleClicks::Passed)
        return false;
    event->setAccepted(isOfLeftButton(*event));
    return true;
}

void clickByDoubleClick(QAbstractButton& button) {
    const auto* clicks = new DoubleClick(button, DoubleClick::SingleClicks::Ignored);
    QObject::connect(clicks, &DoubleClick::doubleClicked, &button, &QAbstractButton::click);
}
