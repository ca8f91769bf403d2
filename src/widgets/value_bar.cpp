#include "widgets/value_bar.h"

ValueBar::ValueBar(Qt::Orientation orientation, QWidget* parent) : QScrollBar(orientation, parent) {
    setInvertedControls(false);
}
