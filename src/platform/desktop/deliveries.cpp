#include "platform/desktop/deliveries.h"

#include "platform/desktop/held_input.h"
#include "platform/desktop/user_input.h"

#include <QCoreApplication>
#include <QInputEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// How soon it is tried again while no input is let through.
constexpr auto kRetry = 10ms;

QEvent::Type wakeType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

bool isInput(QEvent::Type type) {
    // A key that a shortcut takes is seen as the search for it alone.
    return isUserInput(type) || type == QEvent::ShortcutOverride;
}

}  // namespace

Deliveries::Deliveries(std::function<bool()> keysWait) : keysWait_(std::move(keysWait)) {
    retry_.setSingleShot(true);
    retry_.callOnTimeout(this, &Deliveries::resume);
    QCoreApplication::instance()->installEventFilter(this);
}

Instant Deliveries::now() {
    return std::chrono::duration_cast<Instant>(std::chrono::steady_clock::now().time_since_epoch());
}

void Deliveries::post(Instant at, std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back({at, std::move(work)});
    }
    wake();
}

void Deliveries::wake() {
    {
        const std::lock_guard lock(mutex_);
        if (std::exchange(wakePosted_, true))
            return;
    }
    QCoreApplication::postEvent(this, new QEvent(wakeType()));
}

/// The first of two events lets the system's input of the same round have its turn. A pass may have
/// done the work before the second one comes.
bool Deliveries::event(QEvent* event) {
    if (event->type() != wakeType())
        return QObject::event(event);
    {
        const std::lock_guard lock(mutex_);
        wakePosted_ = false;
        if (queue_.empty()) {
            settling_ = false;
            return true;
        }
    }
    if (std::exchange(settling_, true)) {
        finishPass();
        return true;
    }
    handled_ = now();
    wake();
    return true;
}

void Deliveries::finishPass() {
    if (!std::exchange(settling_, false))
        return;
    if (!keysWait_())
        doUntil(handled_);
    const std::lock_guard lock(mutex_);
    if (queue_.empty())
        return;
    if (HeldInput::paused())
        retry_.start(kRetry);
    else if (!std::exchange(wakePosted_, true))
        QCoreApplication::postEvent(this, new QEvent(wakeType()));
}

void Deliveries::resume() {
    const std::unique_lock lock(mutex_);
    if (!queue_.empty() && !std::exchange(wakePosted_, true))
        QCoreApplication::postEvent(this, new QEvent(wakeType()));
}

bool Deliveries::eventFilter(QObject* target, QEvent* event) {
    if (isInput(event->type()) && target->isWindowType())
        doUntil(instantOf(*event));
    return false;
}

/// When input came. The system counts milliseconds from some point of its own; the input that
/// arrived the fastest so far tells which.
Instant Deliveries::instantOf(const QEvent& event) {
    const auto* input = dynamic_cast<const QInputEvent*>(&event);
    const Instant here = now();
    if (!input || input->timestamp() == 0)
        return here;
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(here).count();
    const std::uint32_t lag =
        static_cast<std::uint32_t>(milliseconds) - static_cast<std::uint32_t>(input->timestamp());
    leastLag_ = std::min(leastLag_, lag);
    return here - std::chrono::milliseconds(lag - leastLag_);
}

void Deliveries::doUntil(Instant limit) {
    while (std::optional<Delivery> delivery = next(limit)) {
        ++count_;
        delivery->work();
    }
}

std::optional<Deliveries::Delivery> Deliveries::next(Instant limit) {
    const std::lock_guard lock(mutex_);
    if (queue_.empty() || queue_.front().at > limit || HeldInput::paused())
        return std::nullopt;
    Delivery first = std::move(queue_.front());
    queue_.pop_front();
    return first;
}
