#pragma once

#include "platform/runtime.h"

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

class QEvent;
class QInputEvent;

/// Work of other threads that is done among the user's input, each in the order in which it came.
///
/// The queue of events cannot tell that order: what is posted by a thread overtakes the input of
/// the system that waits. So the work waits until that input has had its turn, and of input that
/// came later it is done first.
class Deliveries : public QObject {
public:
    /// `keysWait` tells whether keys are still to be polled in this pass.
    explicit Deliveries(std::function<bool()> keysWait);

    /// From any thread.
    void post(Instant at, std::function<void()> work);

    /// Does what is due once the events of a pass have been handled.
    void finishPass();
    /// To be called when a wait has ended, which holds everything back.
    void resume();

    /// How much was done so far.
    std::uint64_t count() const { return count_; }

    bool event(QEvent* event) override;

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    struct Delivery {
        Instant at;
        std::function<void()> work;
    };

    static Instant now();
    void wake();
    Instant instantOf(const QEvent& event);
    void doUntil(Instant limit);
    std::optional<Delivery> next(Instant limit);

    const std::function<bool()> keysWait_;
    std::mutex mutex_;
    std::deque<Delivery> queue_;  ///< guarded by the mutex
    bool wakePosted_ = false;     ///< guarded by the mutex
    Instant handled_{0};          ///< input that came up to then has had its turn
    bool settling_ = false;       ///< it is having its turn
    std::uint32_t leastLag_ =
        UINT32_MAX;  ///< milliseconds of the steady clock ahead of the system's
    std::uint64_t count_ = 0;
    QTimer retry_;
};
