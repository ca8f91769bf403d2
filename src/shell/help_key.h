#pragma once

#include <QObject>

#include <functional>

/// F1 opens the help, whichever window or control has the focus.
class HelpKey : public QObject {
public:
    explicit HelpKey(std::function<void()> showHelp);

    /// Types Esc and then F1 into the application, as the menu item "Aiuto" does.
    static void sendEscF1(QWidget& window);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    std::function<void()> showHelp_;
};
