#pragma once

#include <QObject>

/// An event filter that drops presses of keys and mouse buttons in windows that have closed. While
/// the program blocks for the length of a note, presses queue behind the one that closes a window,
/// and would start things in it that the user could not stop any more.
class ClosedWindows : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    /// Releases pass: `KeyTable` needs them to know what is held.
    bool eventFilter(QObject* target, QEvent* event) override;
};
