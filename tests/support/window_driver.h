#pragma once

#include <QEvent>
#include <QString>
#include <QWidget>

#include <functional>

class VirtualRuntime;

/// A mouse event at a place of a widget, past whatever lies over it there.
void sendMouse(QWidget& widget, QEvent::Type type, QPointF place,
               Qt::MouseButton button = Qt::LeftButton);

/// A key event as it comes from the system: a press is looked for among the shortcuts first. A
/// system that marks the events of a repeat does so.
void sendSystemKey(const QWidget& window, QEvent::Type type, int key,
                   Qt::KeyboardModifiers modifiers = {}, const QString& text = {},
                   bool marked = false);

/// Types a key into a window behind the events that wait already.
void queueKey(QWidget& window, int key);

/// Finds controls by their objectName and works them as a user would.
class WindowDriver {
public:
    explicit WindowDriver(QWidget& window) : window_(window) {}
    QWidget& window() const { return window_; }

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
    void close() const { window_.close(); }

    /// Types a key into the window, as it comes from the system.
    void type(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) const;

    QString text(const QString& name) const;  ///< caption, text or number of a control
    bool shown(const QString& name) const;    ///< visible as soon as its window is
    bool enabled(const QString& name) const;  ///< of a control or a menu item

private:
    QWidget& window_;
};

/// Opens a modal window and works in it a second later; the work has to close it.
void workInModal(VirtualRuntime& runtime, const std::function<void()>& open,
                 const std::function<void(const WindowDriver&)>& work);
