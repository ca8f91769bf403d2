#include "widgets/level_bar.h"

LevelBar::LevelBar(QWidget* parent) : ValueBar(Qt::Vertical, parent) {
    setInvertedAppearance(true);
    connect(this, &QScrollBar::actionTriggered, this, &LevelBar::turnMouseAction);
}

void LevelBar::mousePressEvent(QMouseEvent* event) {
    heldByMouse_ = true;
    ValueBar::mousePressEvent(event);
}

void LevelBar::mouseReleaseEvent(QMouseEvent* event) {
    ValueBar::mouseReleaseEvent(event);
    heldByMouse_ = false;
}

/// The toolkit lets the mouse move an upside-down bar the wrong way: its lower arrow would add.
void LevelBar::turnMouseAction(int action) {
    if (!heldByMouse_)
        return;
    int step = 0;
    if (action == SliderSingleStepAdd)
        step = -singleStep();
    else if (action == SliderSingleStepSub)
        step = singleStep();
    else if (action == SliderPageStepAdd)
        step = -pageStep();
    else if (action == SliderPageStepSub)
        step = pageStep();
    if (step != 0)
        setSliderPosition(value() + step);
}
