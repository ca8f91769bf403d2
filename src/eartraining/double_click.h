#pragma once

#include <functional>

class QWidget;

/// Calls a handler at every double click on a widget, and when Enter is pressed on it. The second
/// click of the two is then no click of its own.
void onDoubleClick(QWidget& widget, std::function<void()> handler);
