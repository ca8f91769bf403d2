#include "widgets/announcement.h"

#include <QAccessible>
#include <QWidget>

void announce(QWidget& widget) {
    QAccessibleEvent alert(&widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void announce(QWidget& widget, const QString& text) {
    widget.setAccessibleName(text);
    announce(widget);
}

void announceCursor(const QWidget& widget, QWidget& part) {
    if (!widget.hasFocus())
        return;
    QAccessibleEvent event(&part, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}
