#pragma once

#include <QObject>

/// An event filter by which the Escape that closes a menu of a menu bar also leaves the bar. The
/// toolkit would give the bar the focus, where the keys that answer in an exercise open menus.
class MenuEscape : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    static void leaveMenuBar();
};
