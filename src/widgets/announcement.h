#pragma once

#include <QString>

class QWidget;

/// Has screen readers read out what a widget says now.
void announce(QWidget& widget);

/// The same for a widget that has no text of its own.
void announce(QWidget& widget, const QString& text);

/// Has screen readers follow a cursor within a widget, as if the part that the cursor is on had the
/// focus. Nothing is announced while the widget itself does not have the focus.
void announceCursor(const QWidget& widget, QWidget& part);
