#include "widgets/room_scale.h"

#include "widgets/appearance.h"
#include "widgets/column_scroll_area.h"

#include <QEvent>
#include <QLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kStep = 0.1;
constexpr double kUsualType = 10;  ///< points; with that every window fits the smallest screen

void setPointSize(QWidget& widget, double size) {
    QFont font = widget.font();
    font.setPointSizeF(size);
    widget.setFont(font);
}

}  // namespace

RoomScale::RoomScale(QWidget& window, QSize made, double limit)
    : QObject(&window),
      window_(window),
      made_(made),
      limit_(limit),
      ownSize_(window.font().pointSizeF()) {
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool own = (widget->font().resolveMask() & QFont::SizeResolved) != 0 &&
                         widget->testAttribute(Qt::WA_SetFont);
        if (own && widget->window() == &window)
            others_.push_back({widget, widget->font().pointSizeF()});
    }
    fitScreen();
    window.installEventFilter(this);
}

QSize RoomScale::forType(const QWidget& window, QSize size) {
    return size * std::max(window.font().pointSizeF() / kUsualType, 1.0);
}

/// A control that is shown asks for another layout.
bool RoomScale::eventFilter(QObject* /*target*/, QEvent* event) {
    if (event->type() == QEvent::Resize)
        followSize();
    if (event->type() == QEvent::LayoutRequest) {
        if (steps_ > 0 && !fits(roomHere()))
            enlarge(steps_ - 1);
        fitScreen();
    }
    return false;
}

void RoomScale::followSize() {
    const double room = std::min(static_cast<double>(window_.width()) / made_.width(),
                                 static_cast<double>(window_.height()) / made_.height());
    const int wanted = static_cast<int>(std::floor((std::clamp(room, 1.0, limit_) - 1) / kStep));
    if (std::exchange(wantedSteps_, wanted) != wanted)
        enlarge(wanted);
}

/// By so many steps or as many as fit. The larger type must not keep the window from becoming small
/// again.
void RoomScale::enlarge(int steps) {
    if (steps > 0 && steps_ == 0) {
        window_.layout()->setSizeConstraint(QLayout::SetNoConstraint);
        window_.setMinimumSize(window_.minimumSizeHint());
    }
    do {
        steps_ = steps--;
        applyType();
    } while (steps_ > 0 && !fits(roomHere()));
    if (steps_ == 0) {
        window_.setMinimumSize(0, 0);
        window_.layout()->setSizeConstraint(QLayout::SetDefaultConstraint);
    }
}

void RoomScale::fitScreen() {
    const double least = kUsualType / ownSize_;
    const QSize room = appearance::roomOnScreen(window_).size();
    const double before = fit_;
    while (fit_ > least && !fits(room)) {
        fit_ = std::max(fit_ - kStep, least);
        applyType();
    }
    if (fit_ == before || window_.isHidden() || window_.isMaximized())
        return;
    window_.layout()->activate();
    window_.resize(window_.size().boundedTo(room));
}

/// What is shown can make the window larger than the screen.
QSize RoomScale::roomHere() const {
    return window_.size().boundedTo(appearance::roomOnScreen(window_).size());
}

bool RoomScale::fits(QSize room) const {
    const auto columns = window_.findChildren<ColumnScrollArea*>();
    return window_.minimumSizeHint().boundedTo(room) == window_.minimumSizeHint() &&
           std::none_of(columns.begin(), columns.end(),
                        [](const ColumnScrollArea* column) { return column->lacksRoom(); });
}

/// In points.
double RoomScale::type() const {
    return ownSize_ * fit_ * (1 + steps_ * kStep);
}

void RoomScale::applyType() {
    setPointSize(window_, type());
    for (const Other& other : others_) {
        if (other.widget)
            setPointSize(*other.widget, other.size * type() / ownSize_);
    }
    // The toolkit would ask the layouts within others afresh only when it next arranges them.
    for (QLayout* layout : window_.findChildren<QLayout*>())
        layout->invalidate();
}
