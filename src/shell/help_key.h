#pragma once

#include <QObject>

/// Watches the application for F1, whichever window or control has the focus.
class HelpKey : public QObject {
    Q_OBJECT

public:
    HelpKey();

    /// Types Esc and then F1 into the application, as the menu item "Aiuto" does.
    static void sendEscF1(QWidget& window);

Q_SIGNALS:
    void pressed();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
};
