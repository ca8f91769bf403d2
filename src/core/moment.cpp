#include "core/moment.h"

#include <utility>

Moment::Moment(Runtime& runtime, std::function<void()> over)
    : runtime_(runtime), over_(std::move(over)), alarm_(runtime.makeAlarm([this] { end(); })) {}

void Moment::begin() {
    lasts_ = true;
    alarm_->set(runtime_.now() + kLength);
}

void Moment::end() {
    alarm_->cancel();
    if (std::exchange(lasts_, false))
        over_();
}
