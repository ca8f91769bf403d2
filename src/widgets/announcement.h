#pragma once

#include <QString>

#include <chrono>
#include <functional>

class QWidget;

/// Has a screen reader say a text, whatever has the focus, after the texts given before it and not
/// before `delay` has passed. Without a screen reader nothing happens.
void announce(const QString& text, std::chrono::milliseconds delay = {});

/// Has screen readers follow a cursor within a widget, as if the part that the cursor is on had the
/// focus. Nothing is announced while the widget itself does not have the focus.
void announceCursor(const QWidget& widget, QWidget& part);

/// To be called when the widget gets the focus: the part that its cursor is on then is announced
/// after the widget itself.
void announceCursorOnFocus(QWidget& widget, const std::function<QWidget&()>& part);
