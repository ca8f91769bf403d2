#pragma once

#include <functional>

class QAbstractButton;
class QWidget;

/// Calls a handler at every double click on a widget, and when Enter is pressed on it. The second
/// click of the two is then no click of its own.
void onDoubleClick(QWidget& widget, std::function<void()> handler);

/// The same for a button that a single click does nothing to. The keyboard presses it by Space too,
/// and so does a screen reader.
void onDoubleClickAlone(QAbstractButton& button, const std::function<void()>& handler);
