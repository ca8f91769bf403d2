#pragma once

#include "platform/runtime.h"

#include <QPointer>
#include <QTimer>

#include <functional>

/// An alarm that goes off in every loop of the event queue, that of a box and the short ones of a
/// wait included.
class QtAlarm : public Alarm {
public:
    /// Works as long as its owner lives.
    QtAlarm(QObject& owner, std::function<void()> work);

    ~QtAlarm() override { delete timer_; }

    void set(Instant due) override;
    void cancel() override;

private:
    QPointer<QTimer> timer_;  ///< goes with the owner, too
};
