#pragma once

#include <QObject>

/// An event filter by which the Escape that closes a menu of a menu bar also leaves the bar. The
/// toolkit would give the bar the focus, where the keys that answer in an exercise open menus.
///
/// And the Alt that opens a menu together with a letter does not close it again. A screen reader,
/// which looks at a key press first, hands it on when its shortcut has opened the menu already.
class MenuEscape : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    static void leaveMenuBar();

    bool altInMenu_ = false;  ///< Alt was pressed last while a menu was open
};
