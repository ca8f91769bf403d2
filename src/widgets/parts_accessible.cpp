#include "widgets/parts_accessible.h"

#include <QWidget>

int PartsAccessible::childCount() const {
    return static_cast<int>(parts().size());
}

QAccessibleInterface* PartsAccessible::child(int index) const {
    return QAccessible::queryAccessibleInterface(parts().value(index));
}

int PartsAccessible::indexOfChild(const QAccessibleInterface* part) const {
    return part ? static_cast<int>(parts().indexOf(qobject_cast<QWidget*>(part->object()))) : -1;
}

QWidgetList PartsAccessible::parts() const {
    QWidgetList found;
    for (QObject* object : widget()->children()) {
        auto* part = qobject_cast<QWidget*>(object);
        if (part && !part->isHidden() && !part->accessibleName().isEmpty())
            found.append(part);
    }
    return found;
}
