#pragma once

#include <QWidget>

#include <functional>

class PianoKeyboard;

/// The blue square on middle C, `Lbdoc`: it lies over the key, and its clicks are none of the key.
/// The keyboard paints it.
class MiddleCPatch : public QWidget {
public:
    MiddleCPatch(PianoKeyboard& keyboard, std::function<void()> doubleClicked);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void settle();

    PianoKeyboard& keyboard_;
};
