#include "shell/closed_windows.h"

#include <QEvent>
#include <QWindow>

bool ClosedWindows::eventFilter(QObject* target, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::TouchBegin:
        case QEvent::TabletPress:
        case QEvent::Wheel: {
            const auto* window = qobject_cast<const QWindow*>(target);
            return window && !window->isVisible();
        }
        default:
            return false;
    }
}
