#pragma once

#include <QApplication>
#include <QWidget>

/// Whether the user plays in a window: it is active, and no box or other window over it stops it. A
/// box stops it as soon as it opens, before it is active itself.
inline bool isInFront(const QWidget& window) {
    const QWidget* const stops = QApplication::activeModalWidget();
    return window.isActiveWindow() && (!stops || stops == &window);
}
