#pragma once

#include <QObject>

#include <chrono>
#include <optional>

class QAbstractButton;
class QKeyEvent;
class QWidget;
class Runtime;

/// Reports the taps of a tempo: presses of a button, and of the key T wherever the focus is in the
/// button's window while the button can be pressed. Each has the time at which the system took it,
/// for a press waits until the metronome's next pulse before it is handled.
class TapInput : public QObject {
    Q_OBJECT

public:
    TapInput(QAbstractButton& button, const Runtime& runtime);

Q_SIGNALS:
    void tapped(std::chrono::milliseconds at);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    bool isTap(const QWidget& receiver, const QKeyEvent& key) const;
    void report(std::optional<quint64> timestamp);

    QAbstractButton& button_;
    const Runtime& runtime_;
    std::optional<quint64> pressed_;  ///< when the button was pressed last, in milliseconds
};
