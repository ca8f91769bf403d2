#include "support/virtual_runtime.h"

#include <QAbstractEventDispatcher>
#include <QApplication>

#include <gtest/gtest.h>

#include <utility>

class VirtualRuntime::VirtualAlarm : public Alarm {
public:
    VirtualAlarm(VirtualRuntime& runtime, std::function<void()> work)
        : due(kForever), runtime_(runtime), work_(std::move(work)) {
        runtime_.alarms_.push_back(this);
    }
    ~VirtualAlarm() override { std::erase(runtime_.alarms_, this); }

    void set(Instant instant) override { due = instant; }
    void cancel() override { due = kForever; }
    void ring() {
        due = kForever;
        work_();
    }

    Instant due;

private:
    VirtualRuntime& runtime_;
    std::function<void()> work_;
};

VirtualRuntime::VirtualRuntime() : wallStart_(QDate(2004, 10, 1), QTime(0, 0)) {
    if (auto* dispatcher = QAbstractEventDispatcher::instance()) {
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, dispatcher,
                         [this] { serveModalLoop(); });
    }
}

VirtualRuntime::~VirtualRuntime() {
    if (auto* dispatcher = QAbstractEventDispatcher::instance())
        QObject::disconnect(dispatcher, nullptr, dispatcher, nullptr);
    EXPECT_TRUE(acts_.empty()) << acts_.size() << " acts were never reached";
}

void VirtualRuntime::at(Instant instant, std::function<void()> act) {
    acts_.emplace(instant, std::move(act));
}

void VirtualRuntime::press(KeyCode key, Instant from, Instant until) {
    at(from, [this, key] { held_.insert(key); });
    at(until, [this, key] { held_.erase(key); });
}

void VirtualRuntime::repeat(KeyCode key, Instant instant) {
    at(instant, [this, key] { repeated_ = key; });
}

void VirtualRuntime::runActs() {
    while (!acts_.empty())
        runNextAct();
}

void VirtualRuntime::runNextAct() {
    jumpToNextAct(kForever);
    pump(now_);
}

double VirtualRuntime::secondsSinceMidnight() const {
    const auto day = std::chrono::nanoseconds(std::chrono::hours(24));
    const auto start = std::chrono::milliseconds(wallStart_.time().msecsSinceStartOfDay());
    return std::chrono::duration<double>((start + now_) % day).count();
}

QDateTime VirtualRuntime::dateTime() const {
    return wallStart_.addMSecs(std::chrono::duration_cast<std::chrono::milliseconds>(now_).count());
}

std::unique_ptr<Alarm> VirtualRuntime::makeAlarm(std::function<void()> work) {
    return std::make_unique<VirtualAlarm>(*this, std::move(work));
}

/// Lets the alarms of this stretch go off, moving the clock to each.
bool VirtualRuntime::ringUntil(Instant limit) {
    bool rang = false;
    while (true) {
        const auto first =
            std::min_element(alarms_.begin(), alarms_.end(),
                             [](const auto* a, const auto* b) { return a->due < b->due; });
        if (first == alarms_.end() || (*first)->due == kForever || (*first)->due > limit || ending_)
            return rang;
        now_ = std::max(now_, (*first)->due);
        (*first)->ring();
        rang = true;
    }
}

bool VirtualRuntime::pump(Instant wakeBy) {
    const std::size_t actsBefore = actsRun_;
    ++passes_;
    repeated_ = 0;
    if (qApp)
        QCoreApplication::processEvents();
    ringUntil(now_);
    if (!runDueActs() && !ending_ && now_ < wakeBy && !jumpToNextAct(wakeBy)) {
        ADD_FAILURE() << "a loop waits for ever and no act is left";
        ending_ = true;
    }
    runDueActs();
    return actsRun_ != actsBefore;
}

void VirtualRuntime::blockUntil(Instant end) {
    if (now_ >= end || ending_)
        return;
    end += lateness_();
    ringUntil(end);
    if (!ending_)
        now_ = std::max(now_, end);
}

bool VirtualRuntime::blockUnless(Instant end, const EndsWait& ends) {
    const bool comes = inWait_.first >= now_ && inWait_.first < end;
    const bool isOver = comes && ends(*inWait_.second);
    blockUntil(isOver ? inWait_.first : end);
    return isOver;
}

bool VirtualRuntime::runDueActs() {
    bool ran = false;
    while (!acts_.empty() && acts_.begin()->first <= now_) {
        const auto act = acts_.extract(acts_.begin());
        act.mapped()();
        ++actsRun_;
        ran = true;
        if (qApp)
            QCoreApplication::processEvents();
        // One act a pass: what it caused is seen before the next one happens.
        break;
    }
    return ran;
}

bool VirtualRuntime::jumpToNextAct(Instant limit) {
    if (acts_.empty() && limit == kForever)
        return false;
    if (ringUntil(acts_.empty() ? limit : std::min(limit, acts_.begin()->first)))
        return true;
    if (!acts_.empty() && acts_.begin()->first <= limit) {
        now_ = std::max(now_, acts_.begin()->first);
        return true;
    }
    now_ = limit;
    return true;
}

/// Called when the event queue is about to sleep: in a modal window's loop the next act is due.
void VirtualRuntime::serveModalLoop() {
    if (serving_ || acts_.empty() || !QApplication::activeModalWidget())
        return;
    serving_ = true;
    QMetaObject::invokeMethod(
        qApp,
        [this] {
            serving_ = false;
            jumpToNextAct(kForever);
            runDueActs();
        },
        Qt::QueuedConnection);
}
