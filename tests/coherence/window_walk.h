#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// What is wrong with a window as it stands, one line a fault; empty if nothing is.
namespace window_walk {

/// Controls, lamps and pictures that a screen reader could not name, and pictures that offer it
/// things which are not on show.
QStringList unnamed(const QWidget& window);

/// Keys that would do two things: mnemonics of the menu bar, buttons and labels, and shortcuts.
QStringList sharedKeys(const QWidget& window);

/// Enabled controls at which the Tab key never arrives. It is typed, so the focus moves.
QStringList unreachable(QWidget& window);

/// Texts that do not fit their control, controls outside their window or one over the other.
QStringList clipped(const QWidget& window);

}  // namespace window_walk
