#pragma once

#include <QString>
#include <QStringList>

#include <set>

class QWidget;

/// What is wrong with a window as it stands, one line a fault; empty if nothing is.
namespace window_walk {

/// What a number of windows have shown, all together.
class Coverage {
public:
    void add(const QWidget& window);

    /// Controls that were there and never on show.
    QStringList neverShown() const;

    /// Whether a window or widget of this class was on show.
    bool hasShown(const QString& name) const;

private:
    std::set<QString> shown_;
    std::set<QString> hidden_;
    QStringList classes_;
};

/// Controls, hidden ones too, lamps and pictures that a screen reader could not name, and pictures
/// that offer it things which are not on show.
QStringList unnamed(const QWidget& window);

/// Keys that would do two things: mnemonics of the menu bar, buttons and labels, and shortcuts.
QStringList sharedKeys(const QWidget& window);

/// Enabled controls at which the Tab key never arrives. It is typed, so the focus moves.
QStringList unreachable(QWidget& window);

/// Texts that do not fit their control, controls outside their window or one over the other.
QStringList clipped(const QWidget& window);

}  // namespace window_walk
