#include "coherence/contrast.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QImage>
#include <QPixmap>
#include <QToolButton>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

double luminance(QRgb colour) {
    const auto linear = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
           0.0722 * linear(qBlue(colour));
}

double contrast(QRgb one, QRgb other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

/// Between the most frequent colour and the one that differs most from it.
double textContrast(const QImage& picture) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const auto byCount = [](const auto& one, const auto& other) {
        return one.second < other.second;
    };
    const QRgb behind = std::max_element(counts.begin(), counts.end(), byCount)->first;
    double best = 1;
    for (const auto& [colour, count] : counts)
        best = std::max(best, contrast(colour, behind));
    return best;
}

/// Along the middle row, from just outside of the control over so many of its pixels.
double partContrast(const QImage& window, const QRect& place, int pixels) {
    const int row = place.center().y();
    const QRgb around = window.pixel(std::max(0, place.left() - 2), row);
    double best = 1;
    for (int x = place.left(); x < std::min(place.left() + pixels, window.width()); ++x)
        best = std::max(best, contrast(window.pixel(x, row), around));
    return best;
}

/// How much of the control, from its left edge, has something that must be seen; 0 for none.
int partWidth(const QWidget& widget) {
    const auto* button = qobject_cast<const QToolButton*>(&widget);
    if (qobject_cast<const QAbstractSlider*>(&widget))
        return widget.width();
    if (qobject_cast<const QCheckBox*>(&widget))
        return 20;
    const auto framed = {"QPushButton", "QToolButton", "QComboBox", "QLineEdit"};
    const bool frame = std::any_of(framed.begin(), framed.end(),
                                   [&](const char* name) { return widget.inherits(name); });
    return frame && !(button && button->autoRaise()) ? 6 : 0;
}

}  // namespace

QStringList pale(QWidget& window) {
    const QImage picture = window.grab().toImage();
    QStringList found;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        if (widget->window() != &window || !widget->isVisible() || !widget->isEnabled() ||
            widget->objectName().isEmpty() || widget->objectName().startsWith("qt_") ||
            widget->visibleRegion().boundingRect() != widget->rect() || place.height() < 9)
            continue;
        const int part = partWidth(*widget);
        const QString text =
            widget->property("text").toString() + widget->property("currentText").toString();
        const int edge = part > 0 ? 4 : 0;
        if (!text.trimmed().isEmpty() &&
            textContrast(picture.copy(place.adjusted(edge, edge, -edge, -edge))) < 4.5)
            found << widget->objectName() + " text";
        if (part > 0 && partContrast(picture, place, part) < 3)
            found << widget->objectName() + " part";
    }
    return found;
}
