#pragma once

#include "platform/runtime.h"

#include <QDateTime>

#include <functional>
#include <utility>

/// A runtime that does something after each of its passes, whichever loop took it. A window that
/// polls the keyboard hands it to its player and its arrows, so that keys are polled in their
/// loops too.
class PollingRuntime : public Runtime {
public:
    PollingRuntime(Runtime& runtime, std::function<void()> afterPass)
        : runtime_(runtime), afterPass_(std::move(afterPass)) {}

    bool pump(Instant wakeBy) override {
        const bool input = runtime_.pump(wakeBy);
        afterPass_();
        return input;
    }

    Instant now() const override { return runtime_.now(); }
    double secondsSinceMidnight() const override { return runtime_.secondsSinceMidnight(); }
    QDateTime dateTime() const override { return runtime_.dateTime(); }
    void blockUntil(Instant end) override { runtime_.blockUntil(end); }
    void deliver(Instant at, std::function<void()> work) override {
        runtime_.deliver(at, std::move(work));
    }
    bool pollKeysInOrder(bool on) override { return runtime_.pollKeysInOrder(on); }
    void afterKeys(const std::function<void()>& work) override { runtime_.afterKeys(work); }
    std::unique_ptr<Alarm> makeAlarm(std::function<void()> work) override {
        return runtime_.makeAlarm(std::move(work));
    }
    bool held(KeyCode key) const override { return runtime_.held(key); }
    bool repeated(KeyCode key) const override { return runtime_.repeated(key); }
    void end() override { runtime_.end(); }
    bool ending() const override { return runtime_.ending(); }

private:
    Runtime& runtime_;
    std::function<void()> afterPass_;
};
