#pragma once

#include "platform/desktop/deliveries.h"
#include "platform/desktop/end_requests.h"
#include "platform/desktop/held_input.h"
#include "platform/desktop/input_watch.h"
#include "platform/desktop/key_table.h"
#include "platform/runtime.h"

#include <QEventLoop>
#include <QTimer>

#include <cstdint>
#include <utility>

/// The runtime on the desktop's event queue. Made after the application object.
class QtRuntime : public Runtime {
public:
    QtRuntime();

    /// To be called before the application object is made. The toolkit's other event queue forgets
    /// user input that a wait held back until something else happens.
    static void chooseEventQueue();

    Instant now() const override;
    double secondsSinceMidnight() const override;
    QDateTime dateTime() const override;
    bool pump(Instant wakeBy) override;
    void blockUntil(Instant end) override;
    bool blockUnless(Instant end, const EndsWait& ends) override;
    void deliver(Instant at, std::function<void()> work) override {
        deliveries_.post(at, std::move(work));
    }
    bool pollKeysInOrder(bool on) override { return keys_.setInOrder(on); }
    void afterKeys(const std::function<void()>& work) override { keys_.post(work); }
    std::unique_ptr<Alarm> makeAlarm(std::function<void()> work) override;
    bool held(KeyCode key) const override { return keys_.held(key); }
    bool repeated(KeyCode key) const override { return keys_.repeated(key); }
    void end() override;
    bool ending() const override { return ending_; }

    /// The one that boxes use as well, so that all input keeps its order.
    HeldInput& heldInput() { return heldInput_; }

private:
    std::uint64_t inputCount() const { return input_.count() + deliveries_.count(); }
    bool takeTurns();
    void sleepUntilEvent(Instant wakeBy, QEventLoop::ProcessEventsFlags kinds);
    void waitWithoutInput(Instant end);
    void paintAndServe(Instant until);

    KeyTable keys_;
    InputWatch input_;
    HeldInput heldInput_;
    Deliveries deliveries_{[this] { return keys_.waits(); }};
    EndRequests endRequests_;
    QTimer wakeUp_;
    QObject alarms_;  ///< owns their timers
    bool ending_ = false;
};
