#pragma once

#include <QObject>

/// Keeps the presses of keys and mouse buttons from windows that have closed. While the program
/// blocks for the length of a note, presses queue behind the one that closes a window, and would
/// start things in it that nobody could stop any more.
class ClosedWindows : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    /// Releases pass: whoever follows what is held needs them.
    bool eventFilter(QObject* target, QEvent* event) override;
};
