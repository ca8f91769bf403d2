#include "composer/panel_text.h"

#include <QWidget>

namespace panel_text {

void enlarge(QWidget& widget, double scale) {
    QFont font = widget.font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(true);
    widget.setFont(font);
}

void reserve(QWidget& widget, const QString& widest, int frame) {
    widget.setMinimumWidth(widget.fontMetrics().horizontalAdvance(widest) + frame);
}

}  // namespace panel_text
