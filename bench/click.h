#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

/// Presses the left button in the middle of a control and lets it go.
inline void click(const QWidget& window, const QString& name) {
    auto* widget = window.findChild<QWidget*>(name);
    const QPointF place(widget->rect().center());
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, place, widget->mapToGlobal(place), Qt::LeftButton, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    }
}
