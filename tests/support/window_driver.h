#pragma once

#include <QString>
#include <QWidget>

class QAction;

/// Finds controls by their objectName and works them as a user would.
class WindowDriver {
public:
    explicit WindowDriver(QWidget& window) : window_(window) {}

    template <typename Control>
    Control& find(const QString& name) const {
        auto* control = window_.findChild<Control*>(name);
        if (!control)
            qFatal("no control named %s", qPrintable(name));
        return *control;
    }

    /// Presses the left button in the middle of a control; a disabled or hidden one ignores it.
    void click(const QString& name) const;
    void doubleClick(const QString& name) const;
    void trigger(const QString& action) const;

    /// Types a key into the window, to whichever control has the focus.
    void type(int key, const QString& text = {}) const;

    QString text(const QString& name) const;  ///< caption, text or number of a control
    bool shown(const QString& name) const;    ///< visible as soon as its window is
    bool enabled(const QString& name) const;  ///< of a control or a menu item

private:
    QWidget& window_;
};
