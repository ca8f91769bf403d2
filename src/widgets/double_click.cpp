#include "widgets/double_click.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace {

class DoubleClickFilter : public QObject {
public:
    DoubleClickFilter(QWidget& widget, std::function<void()> handler, bool alone)
        : QObject(&widget), handler_(std::move(handler)), alone_(alone) {
        widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* /*target*/, QEvent* event) override {
        if (alone_ && event->type() == QEvent::MouseButtonPress)
            return true;
        if (!isDoubleClick(*event))
            return false;
        handler_();
        return true;
    }

private:
    static bool isDoubleClick(const QEvent& event) {
        if (event.type() == QEvent::MouseButtonDblClick)
            return static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton;
        if (event.type() != QEvent::KeyPress)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(event);
        return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    }

    std::function<void()> handler_;
    bool alone_;
};

}  // namespace

void onDoubleClick(QWidget& widget, std::function<void()> handler) {
    new DoubleClickFilter(widget, std::move(handler), false);
}

void onDoubleClickAlone(QAbstractButton& button, const std::function<void()>& handler) {
    new DoubleClickFilter(button, handler, true);
    QObject::connect(&button, &QAbstractButton::clicked, &button, handler);
}
