#pragma once

#include <QScrollBar>

/// A vertical scroll bar with its greatest value at the top, as seen and as moved by keys, wheel
/// and mouse. It is tinted while it has the focus.
class LevelBar : public QScrollBar {
    Q_OBJECT

public:
    explicit LevelBar(QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void turnMouseAction(int action);

    bool heldByMouse_ = false;
};
