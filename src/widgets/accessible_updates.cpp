#include "widgets/accessible_updates.h"

#include <QAccessible>
#include <QListWidget>
#include <QWidget>
#include <QWindow>

namespace accessible_updates {
namespace {

bool describesWidget(QAccessible::Event type) {
    switch (type) {
        case QAccessible::ObjectShow:
        case QAccessible::ObjectHide:
        case QAccessible::NameChanged:
        case QAccessible::DescriptionChanged:
        case QAccessible::StateChanged:
        case QAccessible::ValueChanged:
            return true;
        default:
            return false;
    }
}

void report(QAccessibleEvent* event);

/// The toolkit's own way leads through the handler.
void passOn(QAccessibleEvent& event) {
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(&event);
    QAccessible::installUpdateHandler(report);
}

/// A list that gets the focus reports its current item first and itself then, so that the item
/// would not be said.
void reportCurrentItem(const QAccessibleEvent& focus) {
    auto* list = qobject_cast<QListWidget*>(focus.object());
    if (!list || focus.child() >= 0 || list->currentRow() < 0)
        return;
    QAccessibleEvent item(list, QAccessible::Focus);
    item.setChild(list->currentRow());
    passOn(item);
}

/// A change of a table's model has reached the table before, and the bridges make nothing of it; a
/// second time it would count twice.
void report(QAccessibleEvent* event) {
    if (event->type() == QAccessible::TableModelChanged || !concernsScreen(*event))
        return;
    passOn(*event);
    if (event->type() == QAccessible::Focus)
        reportCurrentItem(*event);
}

}  // namespace

bool concernsScreen(const QAccessibleEvent& event) {
    const auto* widget = qobject_cast<QWidget*>(event.object());
    if (!widget || widget->isWindow() || !describesWidget(event.type()))
        return true;
    const QWindow* window = widget->window()->windowHandle();
    return window && window->isVisible();
}

void reportScreenOnly() {
    QAccessible::installUpdateHandler(report);
}

}  // namespace accessible_updates
