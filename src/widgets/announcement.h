#pragma once

#include <QString>

class QWidget;

/// Has screen readers read out what a widget says now.
void announce(QWidget& widget);

/// The same for a widget that has no text of its own.
void announce(QWidget& widget, const QString& text);
