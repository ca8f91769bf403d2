#include "shell/bar_parts.h"

#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>

namespace {

/// Shares of the bar's length, and what they are at most in units of the window.
constexpr double kArrowShare = 0.2;
constexpr double kThumbShare = 0.17;
constexpr int kLongestArrow = 24;
constexpr int kLongestThumb = 20;

}  // namespace

BarParts valueBarParts(const QStyleOptionSlider& option) {
    const bool across = option.orientation == Qt::Horizontal;
    const QRect bar = option.rect;
    const int length = across ? bar.width() : bar.height();
    const int arrow = std::min(kLongestArrow, static_cast<int>(kArrowShare * length));
    const int thumb = std::min(kLongestThumb, static_cast<int>(kThumbShare * length));
    const int room = std::max(0, length - 2 * arrow);
    const int place =
        QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                        std::max(0, room - thumb), option.upsideDown);
    const auto part = [&](int from, int size) {
        return across ? QRect(bar.left() + from, bar.top(), size, bar.height())
                      : QRect(bar.left(), bar.top() + from, bar.width(), size);
    };
    return {part(arrow, room), part(arrow + place, thumb), part(0, arrow),
            part(length - arrow, arrow)};
}
