#include "support/window_driver.h"

#include "support/virtual_runtime.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVariant>
#include <QWindow>

#include <gtest/gtest.h>

/// The toolkit's entrance for the system's key events; no header has it.
extern Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                           Qt::KeyboardModifiers modifiers, const QString& text,
                                           bool repeat, ushort count);

void queueKey(QWidget& window, int key) {
    const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        QCoreApplication::postEvent(window.windowHandle(),
                                    new QKeyEvent(type, key, Qt::NoModifier, text));
}

void sendMouse(QWidget& widget, QEvent::Type type, QPointF place, Qt::MouseButton button) {
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void sendSystemKey(const QWidget& window, QEvent::Type type, int key,
                   Qt::KeyboardModifiers modifiers, const QString& text, bool marked) {
    qt_handleKeyEvent(window.windowHandle(), type, key, modifiers, text, marked, 1);
}

void WindowDriver::click(const QString& name) const {
    auto& widget = find<QWidget>(name);
    if (!widget.isEnabled() || !widget.isVisible())
        return;
    sendMouse(widget, QEvent::MouseButtonPress, widget.rect().center());
    sendMouse(widget, QEvent::MouseButtonRelease, widget.rect().center());
}

void WindowDriver::doubleClick(const QString& name) const {
    click(name);
    auto& widget = find<QWidget>(name);
    sendMouse(widget, QEvent::MouseButtonDblClick, widget.rect().center());
    sendMouse(widget, QEvent::MouseButtonRelease, widget.rect().center());
}

void WindowDriver::trigger(const QString& action) const {
    find<QAction>(action).trigger();
}

void WindowDriver::type(int key, const QString& text, Qt::KeyboardModifiers modifiers) const {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        sendSystemKey(window_, type, key, modifiers, text);
}

QString WindowDriver::text(const QString& name) const {
    const auto& widget = find<QWidget>(name);
    for (const char* property : {"text", "currentText", "value", "title"}) {
        const QVariant value = widget.property(property);
        if (value.isValid())
            return value.toString();
    }
    return {};
}

bool WindowDriver::shown(const QString& name) const {
    return find<QWidget>(name).isVisibleTo(&window_);
}

bool WindowDriver::enabled(const QString& name) const {
    if (const auto* action = window_.findChild<QAction*>(name))
        return action->isEnabled();
    return find<QWidget>(name).isEnabled();
}

void workInModal(VirtualRuntime& runtime, const std::function<void()>& open,
                 const std::function<void(const WindowDriver&)>& work) {
    bool worked = false;
    runtime.at(runtime.now() + std::chrono::seconds(1), [&] {
        QWidget* window = QApplication::activeModalWidget();
        ASSERT_TRUE(window);
        QCoreApplication::processEvents();
        work(WindowDriver(*window));
        worked = true;
    });
    open();
    EXPECT_TRUE(worked);
}
