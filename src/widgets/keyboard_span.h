#pragma once

#include <QWidget>

#include <optional>
#include <utility>

class PianoKeyboard;

/// What lies over a piano keyboard for orientation: the name of each octave's first note on its
/// key, and a line in the row of the range marks from one end of a range to the other. It lets the
/// mouse through.
class KeyboardSpan : public QWidget {
    Q_OBJECT

public:
    explicit KeyboardSpan(PianoKeyboard& keyboard);

    /// By the keys' indices, the lower one first; nothing without a range.
    void setSpan(std::optional<std::pair<int, int>> span);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintNames(QPainter& painter) const;
    void paintSpan(QPainter& painter) const;

    PianoKeyboard& keyboard_;
    std::optional<std::pair<int, int>> span_;
};
