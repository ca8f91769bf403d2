#include "widgets/room_scale.h"

#include "widgets/appearance.h"

#include <QEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kStep = 0.1;
constexpr double kUsualType = 10;  ///< points; with that every window fits the smallest screen

void setPointSize(QWidget& widget, double size) {
    QFont font = widget.font();
    font.setPointSizeF(size);
    widget.setFont(font);
}

}  // namespace

RoomScale::RoomScale(QWidget& window, QSize made)
    : QObject(&window), window_(window), made_(made), ownSize_(window.font().pointSizeF()) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool own = (widget->font().resolveMask() & QFont::SizeResolved) != 0 &&
                         widget->testAttribute(Qt::WA_SetFont);
        if (own && widget->window() == &window)
            others_.push_back({widget, widget->font().pointSizeF()});
    }
    fitScreen();
    window.installEventFilter(this);
}

void RoomScale::fitScreen() {
    const QSize room = appearance::roomOnScreen(window_).size();
    for (double scale = 1; !fits(room) && scale * ownSize_ > kUsualType; scale -= kStep)
        scaleType(std::max(scale - kStep, kUsualType / ownSize_));
    ownSize_ *= scale_;
    for (Other& other : others_)
        other.size *= scale_;
    scale_ = 1;
}

bool RoomScale::fits(QSize room) const {
    return window_.minimumSizeHint().boundedTo(room) == window_.minimumSizeHint();
}

bool RoomScale::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::Resize)
        follow();
    return false;
}

/// The larger type must not keep the window from becoming small again.
void RoomScale::follow() {
    const double room = std::min(static_cast<double>(window_.width()) / made_.width(),
                                 static_cast<double>(window_.height()) / made_.height());
    const double scale = std::clamp(std::floor(room / kStep) * kStep, 1.0, kLimit);
    if (scale == scale_)
        return;
    if (scale_ == 1)
        window_.setMinimumSize(window_.minimumSizeHint());
    scaleType(scale);
    if (scale == 1)
        window_.setMinimumSize(0, 0);
}

void RoomScale::scaleType(double scale) {
    scale_ = scale;
    setPointSize(window_, scale * ownSize_);
    for (const Other& other : others_) {
        if (other.widget)
            setPointSize(*other.widget, scale * other.size);
    }
}
