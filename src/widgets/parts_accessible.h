#pragma once

#include <QAccessibleWidget>

/// A picture or a row that is made of parts. A screen reader is offered those that are on show and
/// have a name: not the notes that wait to be shown, nor a mark of which its key tells already.
class PartsAccessible : public QAccessibleWidget {
public:
    PartsAccessible(QWidget* whole, QAccessible::Role role) : QAccessibleWidget(whole, role) {}

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* part) const override;

private:
    QWidgetList parts() const;
};
