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
