#include "support/window_driver.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVariant>
#include <QWindow>

namespace {

void sendMouse(QWidget& widget, QEvent::Type type) {
    const QPointF place = widget.rect().center();
    const auto buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace

void WindowDriver::click(const QString& name) const {
    auto& widget = find<QWidget>(name);
    if (!widget.isEnabled() || !widget.isVisible())
        return;
    sendMouse(widget, QEvent::MouseButtonPress);
    sendMouse(widget, QEvent::MouseButtonRelease);
}

void WindowDriver::doubleClick(const QString& name) const {
    click(name);
    sendMouse(find<QWidget>(name), QEvent::MouseButtonDblClick);
    sendMouse(find<QWidget>(name), QEvent::MouseButtonRelease);
}

void WindowDriver::trigger(const QString& action) const {
    find<QAction>(action).trigger();
}

void WindowDriver::type(int key, const QString& text) const {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(window_.windowHandle(), &event);
    }
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
