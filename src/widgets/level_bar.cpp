#include "widgets/level_bar.h"

#include "widgets/appearance.h"

LevelBar::LevelBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
    setInvertedAppearance(true);
    setInvertedControls(false);
    connect(this, &QScrollBar::actionTriggered, this, &LevelBar::turnMouseAction);
}

void LevelBar::mousePressEvent(QMouseEvent* event) {
    heldByMouse_ = true;
    QScrollBar::mousePressEvent(event);
}

void LevelBar::mouseReleaseEvent(QMouseEvent* event) {
    QScrollBar::mouseReleaseEvent(event);
    heldByMouse_ = false;
}

void LevelBar::focusInEvent(QFocusEvent* event) {
    QScrollBar::focusInEvent(event);
    appearance::tintWithFocus(*this);
}

void LevelBar::focusOutEvent(QFocusEvent* event) {
    QScrollBar::focusOutEvent(event);
    appearance::tintWithFocus(*this);
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
