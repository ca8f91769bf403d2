#include "widgets/panel_text.h"

#include <QLabel>

#include <algorithm>

namespace panel_text {

void reserve(QWidget& widget, const QString& widest, int frame) {
    widget.setMinimumWidth(widget.fontMetrics().horizontalAdvance(widest) + frame);
}

void reserveWidest(QLabel& label, const QStringList& texts) {
    for (const QString& text : texts) {
        label.setText(text);
        label.setMinimumWidth(std::max(label.minimumWidth(), label.sizeHint().width()));
    }
}

}  // namespace panel_text
