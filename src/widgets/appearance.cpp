#include "widgets/appearance.h"

#include <QWidget>

namespace appearance {

void enlargeText(QWidget& widget, double scale, QFont::Weight weight) {
    QFont font = widget.font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    widget.setFont(font);
}

void keepPlace(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

QColor mixed(const QColor& over, const QColor& under, double share) {
    const auto mix = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {mix(over.red(), under.red()), mix(over.green(), under.green()),
            mix(over.blue(), under.blue())};
}

}  // namespace appearance
