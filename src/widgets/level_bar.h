#pragma once

#include "widgets/value_bar.h"

/// A vertical bar with its greatest value at the top, as seen and as moved by keys, wheel and
/// mouse.
class LevelBar : public ValueBar {
    Q_OBJECT

public:
    explicit LevelBar(QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void turnMouseAction(int action);

    bool heldByMouse_ = false;
};
