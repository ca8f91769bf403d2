#pragma once

#include <QWidget>

class PianoKeyboard;

/// The blue square on middle C, `Lbdoc`. It lies over the key, so that a click on it does not play
/// the key; the keyboard paints it.
class MiddleCPatch : public QWidget {
    Q_OBJECT

public:
    explicit MiddleCPatch(PianoKeyboard& keyboard);

Q_SIGNALS:
    void doubleClicked();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void placeOnKey();

    PianoKeyboard& keyboard_;
};
