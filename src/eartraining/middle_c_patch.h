#pragma once

#include <QWidget>

#include <functional>

class PianoKeyboard;

/// The place of the blue square on middle C, `Lbdoc`. The keyboard paints it and takes its clicks;
/// a double click on it is its own.
class MiddleCPatch : public QWidget {
public:
    MiddleCPatch(PianoKeyboard& keyboard, std::function<void()> doubleClicked);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void settle();

    QWidget& key_;
};
