#include "widgets/panel_text.h"

#include <QWidget>

namespace panel_text {

void reserve(QWidget& widget, const QString& widest, int frame) {
    widget.setMinimumWidth(widget.fontMetrics().horizontalAdvance(widest) + frame);
}

}  // namespace panel_text
