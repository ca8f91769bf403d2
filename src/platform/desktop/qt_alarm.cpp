#include "platform/desktop/qt_alarm.h"

#include <algorithm>
#include <utility>

QtAlarm::QtAlarm(QObject& owner, std::function<void()> work) : timer_(new QTimer(&owner)) {
    timer_->setSingleShot(true);
    QObject::connect(timer_, &QTimer::timeout, timer_, std::move(work));
}

void QtAlarm::set(Instant due) {
    if (!timer_)
        return;
    const Instant now = std::chrono::steady_clock::now().time_since_epoch();
    timer_->start(std::max(std::chrono::ceil<std::chrono::milliseconds>(due - now),
                           std::chrono::milliseconds(0)));
}

void QtAlarm::cancel() {
    if (timer_)
        timer_->stop();
}
