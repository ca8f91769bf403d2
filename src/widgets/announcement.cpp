#include "widgets/announcement.h"

#include "widgets/announcer.h"

#include <QAccessible>
#include <QWidget>

void announce(const QString& text, std::chrono::milliseconds delay) {
    Announcer& announcer = Announcer::shared();
    if (!text.isEmpty() && announcer.heard())
        announcer.say(text, delay);
}

void announceCursor(const QWidget& widget, QWidget& part) {
    if (!widget.hasFocus())
        return;
    QAccessibleEvent event(&part, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}
