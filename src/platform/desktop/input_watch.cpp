#include "platform/desktop/input_watch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWindow>

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

}  // namespace

InputWatch::InputWatch() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputWatch::eventFilter(QObject* target, QEvent* event) {
    if (isInput(event->type()) && target->isWindowType())
        ++count_;
    return false;
}
