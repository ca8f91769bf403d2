#include "shell/menu_escape.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

/// The bar gets the focus when the menu has handled its key.
bool MenuEscape::eventFilter(QObject* target, QEvent* event) {
    if (event->type() == QEvent::KeyPress && qobject_cast<QMenu*>(target) &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel))
        QMetaObject::invokeMethod(this, &MenuEscape::leaveMenuBar, Qt::QueuedConnection);
    return false;
}

/// The bar's own Escape returns the focus to where it was.
void MenuEscape::leaveMenuBar() {
    auto* bar = qobject_cast<QMenuBar*>(QApplication::focusWidget());
    if (!bar || QApplication::activePopupWidget())
        return;
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(bar, &escape);
}
