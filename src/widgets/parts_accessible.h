#pragma once

#include <QAccessibleWidget>

/// What a screen reader reads of a picture or a row that is made of parts: those that are visible
/// and have a name. Hidden notes are left out, and so are marks that the key beside them names
/// already.
class PartsAccessible : public QAccessibleWidget {
public:
    PartsAccessible(QWidget* whole, QAccessible::Role role) : QAccessibleWidget(whole, role) {}

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* part) const override;

private:
    QWidgetList parts() const;
};

/// Has screen readers read a class of widgets as a whole of parts. To be called before the first of
/// them is shown; calling it again does nothing.
template <typename Whole, QAccessible::Role role>
void installPartsAccessible() {
    QAccessible::installFactory(
        [](const QString& className, QObject* object) -> QAccessibleInterface* {
            if (className != QLatin1String(Whole::staticMetaObject.className()))
                return nullptr;
            return new PartsAccessible(qobject_cast<QWidget*>(object), role);
        });
}
