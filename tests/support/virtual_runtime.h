#pragma once

#include "platform/runtime.h"

#include <QDateTime>

#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

/// The runtime on virtual time: nothing sleeps, the clock jumps.
///
/// Acts are scheduled at exact instants. A loop that pumps runs the acts that are due and otherwise
/// jumps to the next act or to its own wake-up; a blocking wait jumps to its end and leaves the
/// acts that fell into it for the next pass, as user input is left. A modal window's own loop jumps
/// to the next act whenever it idles. When a loop waits for ever and no act is left, the runtime
/// ends the program and the test has failed.
class VirtualRuntime : public Runtime {
public:
    VirtualRuntime();
    ~VirtualRuntime() override;

    /// Schedules an act at an instant counted from the start of the test.
    void at(Instant instant, std::function<void()> act);

    /// Schedules a key going down and up again.
    void press(KeyCode key, Instant from, Instant until);

    /// Schedules a repeat of a key that is down then.
    void repeat(KeyCode key, Instant instant);

    /// The wall clock at virtual time 0; it is midnight unless set, when waits have the finest
    /// grain.
    void setWallClock(const QDateTime& start) { wallStart_ = start; }

    /// Moves the clock, as work that takes time does.
    void advance(Instant duration) { now_ += duration; }

    /// How much later than its end each wait returns, as on a busy machine.
    void wakeLate(std::function<Instant()> lateness) { lateness_ = std::move(lateness); }

    /// What the user does in a wait that ends for some input.
    void doInWait(Instant instant, const QEvent& input) { inWait_ = {instant, &input}; }

    /// Runs every act that is left, moving the clock to each.
    void runActs();
    void runNextAct();

    /// What was to come after the end does not come any more.
    void forgetActs() { acts_.clear(); }

    int passes() const { return passes_; }

    Instant now() const override { return now_; }
    double secondsSinceMidnight() const override;
    QDateTime dateTime() const override;
    bool pump(Instant wakeBy) override;
    void blockUntil(Instant end) override;
    bool blockUnless(Instant end, const EndsWait& ends) override;
    void deliver(Instant instant, std::function<void()> work) override {
        at(instant, std::move(work));
    }
    /// Goes off at its very instant, in a wait as well, but not while `advance` moves the clock.
    std::unique_ptr<Alarm> makeAlarm(std::function<void()> work) override;
    bool held(KeyCode key) const override { return held_.count(key) > 0; }
    bool repeated(KeyCode key) const override { return repeated_ == key; }
    bool pollKeysInOrder(bool on) override { return std::exchange(keysInOrder_, on); }
    bool keysInOrder() const { return keysInOrder_; }
    void end() override {
        saveWork();
        ending_ = true;
    }
    bool ending() const override { return ending_; }

private:
    class VirtualAlarm;

    bool runDueActs();
    bool ringUntil(Instant limit);
    bool jumpToNextAct(Instant limit);
    void serveModalLoop();

    Instant now_{0};
    QDateTime wallStart_;
    std::multimap<Instant, std::function<void()>> acts_;
    std::vector<VirtualAlarm*> alarms_;
    std::set<KeyCode> held_;
    KeyCode repeated_ = 0;  ///< in this pass
    std::function<Instant()> lateness_ = [] { return Instant{0}; };
    std::pair<Instant, const QEvent*> inWait_{kForever, nullptr};
    std::size_t actsRun_ = 0;
    int passes_ = 0;
    bool serving_ = false;
    bool ending_ = false;
    bool keysInOrder_ = false;
};
