#include "shell/menu_escape.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

bool MenuEscape::eventFilter(QObject* target, QEvent* event) {
    const auto isAlt = [event] { return static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt; };
    if (event->type() == QEvent::ShortcutOverride && target->isWindowType() && isAlt())
        altInMenu_ = QApplication::activePopupWidget();
    if (event->type() != QEvent::KeyPress || !qobject_cast<QMenu*>(target))
        return false;
    // The bar gets the focus when the menu has handled its key.
    if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel))
        QMetaObject::invokeMethod(this, &MenuEscape::leaveMenuBar, Qt::QueuedConnection);
    return isAlt() && !altInMenu_;
}

/// The bar's own Escape returns the focus to where it was.
void MenuEscape::leaveMenuBar() {
    auto* bar = qobject_cast<QMenuBar*>(QApplication::focusWidget());
    if (!bar || QApplication::activePopupWidget())
        return;
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(bar, &escape);
}
