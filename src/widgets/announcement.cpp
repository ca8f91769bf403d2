#include "widgets/announcement.h"

#include "widgets/announcer.h"

#include <QAccessible>
#include <QWidget>

void announce(const QString& text, std::chrono::milliseconds delay) {
    Announcer& announcer = Announcer::shared();
    if (!text.isEmpty() && announcer.heard())
        announcer.say(text, delay);
}

/// After the toolkit has told of the focus, which comes behind the widget's own event.
void announceCursorOnFocus(QWidget& widget, const std::function<QWidget&()>& part) {
    QMetaObject::invokeMethod(
        &widget, [&widget, part] { announceCursor(widget, part()); }, Qt::QueuedConnection);
}

void announceCursor(const QWidget& widget, QWidget& part) {
    if (!widget.hasFocus())
        return;
    QAccessibleEvent event(&part, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}
