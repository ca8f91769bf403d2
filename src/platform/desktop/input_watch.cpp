#include "platform/desktop/input_watch.h"

#include "platform/desktop/user_input.h"

#include <QCoreApplication>

InputWatch::InputWatch() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputWatch::eventFilter(QObject* target, QEvent* event) {
    // A key that a shortcut takes is seen as the search for it alone.
    const bool isInput = isUserInput(event->type()) || event->type() == QEvent::ShortcutOverride;
    if (isInput && target->isWindowType())
        ++count_;
    return false;
}
