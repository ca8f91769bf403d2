#include "platform/desktop/qt_runtime.h"

#include "platform/desktop/qt_alarm.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>
#include <thread>
#include <utility>

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

/// How often a wait that the user may end looks at what he did.
constexpr Instant kInputInterval = 50ms;
/// In the last stretch of a wait no events are processed, as a repaint could outlast it.
constexpr Instant kNoEventsStretch = 8ms;
/// A sleeping thread is woken late by up to about a millisecond; the rest is a busy wait.
constexpr Instant kBusyWaitStretch = 1500us;

SteadyClock::time_point onSteadyClock(Instant instant) {
    return SteadyClock::time_point{std::chrono::duration_cast<SteadyClock::duration>(instant)};
}

bool processEvents(QEventLoop::ProcessEventsFlags flags) {
    return QAbstractEventDispatcher::instance()->processEvents(flags);
}

}  // namespace

QtRuntime::QtRuntime() : endRequests_([this] { end(); }, [this] { saveWork(); }) {
    wakeUp_.setTimerType(Qt::PreciseTimer);
    wakeUp_.setSingleShot(true);
}

void QtRuntime::chooseEventQueue() {
    qputenv("QT_NO_GLIB", "1");
}

Instant QtRuntime::now() const {
    return std::chrono::duration_cast<Instant>(SteadyClock::now().time_since_epoch());
}

double QtRuntime::secondsSinceMidnight() const {
    // The date's own resolution is a millisecond; the rest comes from the system clock itself.
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto millis = std::chrono::floor<std::chrono::milliseconds>(sinceEpoch);
    const double fraction = std::chrono::duration<double>(sinceEpoch - millis).count();
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(millis.count());
    return local.time().msecsSinceStartOfDay() / 1000.0 + fraction;
}

QDateTime QtRuntime::dateTime() const {
    return QDateTime::currentDateTime();
}

bool QtRuntime::pump(Instant wakeBy) {
    const std::uint64_t inputBefore = inputCount();
    const int polledBefore = keys_.setPolledDepth(KeyTable::currentDepth());
    const bool ran = processEvents(QEventLoop::AllEvents);
    const bool keysChanged = takeTurns();
    if (!ran && !keysChanged && !ending_ && now() < wakeBy) {
        sleepUntilEvent(wakeBy, QEventLoop::AllEvents);
        takeTurns();
    }
    keys_.setPolledDepth(polledBefore);
    return inputCount() != inputBefore;
}

/// What was delivered comes before the keys of its pass are polled, or in the next pass if such
/// keys were there first.
bool QtRuntime::takeTurns() {
    deliveries_.finishPass();
    return keys_.advance();
}

void QtRuntime::sleepUntilEvent(Instant wakeBy, QEventLoop::ProcessEventsFlags kinds) {
    if (wakeBy != kForever) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(wakeBy - now());
        wakeUp_.start(std::max(left, std::chrono::milliseconds{0}));
    }
    processEvents(kinds | QEventLoop::WaitForMoreEvents);
    wakeUp_.stop();
}

void QtRuntime::blockUntil(Instant end) {
    if (now() >= end)
        return;
    waitWithoutInput(end);
    deliveries_.resume();
}

/// Answers at once what comes meanwhile from the window manager and from a screen reader, which
/// asks about a hundred times before it says a word.
void QtRuntime::waitWithoutInput(Instant end) {
    const HeldInput::Pause noInput;
    const Instant lastEvents = end - kNoEventsStretch;
    paintAndServe(lastEvents);
    while (!ending_ && now() < lastEvents) {
        sleepUntilEvent(lastEvents, QEventLoop::ExcludeUserInputEvents);
        paintAndServe(lastEvents);
    }
    if (ending_)
        return;
    std::this_thread::sleep_until(onSteadyClock(end - kBusyWaitStretch));
    while (now() < end) {
    }
}

/// The input has to leave the queue to be looked at, and is delivered after the wait.
bool QtRuntime::blockUnless(Instant end, const EndsWait& ends) {
    const HeldInput::Pause noInput;
    while (!ending_ && end - now() > kInputInterval + kNoEventsStretch) {
        if (heldInput_.collect(ends))
            return true;
        const Instant next = now() + kInputInterval;
        while (!ending_ && now() < next)
            sleepUntilEvent(next, QEventLoop::ExcludeUserInputEvents);
    }
    blockUntil(end);
    return false;
}

/// Lets layout and painting settle and answers the window manager; user input, a click on a
/// window's close button included, stays queued.
void QtRuntime::paintAndServe(Instant until) {
    while (!ending_ && now() < until && processEvents(QEventLoop::ExcludeUserInputEvents)) {
    }
}

std::unique_ptr<Alarm> QtRuntime::makeAlarm(std::function<void()> work) {
    return std::make_unique<QtAlarm>(alarms_, std::move(work));
}

/// Leaves every loop of events. A quit of the toolkit would first ask every window to close, and
/// do nothing while one of them is about to.
void QtRuntime::end() {
    if (!ending_)
        saveWork();
    ending_ = true;
    QCoreApplication::exit();
}
