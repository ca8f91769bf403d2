#pragma once

#include <QScrollBar>

/// A vertical scroll bar with its greatest value at the top: for the eye, the keys, the wheel and
/// the mouse alike. It is tinted while it has the focus.
class LevelBar : public QScrollBar {
public:
    explicit LevelBar(QWidget* parent = nullptr);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void turnMouseAction(int action);
};
