#include "shell/help_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

HelpKey::HelpKey() {
    QApplication::instance()->installEventFilter(this);
}

void HelpKey::sendEscF1(QWidget& window) {
    for (const int key : {Qt::Key_Escape, Qt::Key_F1}) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QApplication::postEvent(window.windowHandle(),
                                    new QKeyEvent(type, key, Qt::NoModifier));
        }
    }
}

bool HelpKey::eventFilter(QObject* target, QEvent* event) {
    // Only the event at a control is a new press; its window receives repeats too.
    if (event->type() != QEvent::KeyPress || !target->isWidgetType())
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
        return false;
    // An open menu would hold the mouse grab.
    while (QWidget* menu = QApplication::activePopupWidget())
        menu->close();
    Q_EMIT pressed();
    return true;
}
