#pragma once

#include "platform/key_codes.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QDateTime;
class QEvent;
class SavedAtEnd;

/// A point on the steady clock: time since an arbitrary origin. It never goes back and never
/// wraps, whatever happens to the wall clock.
using Instant = std::chrono::nanoseconds;

constexpr Instant kForever = Instant::max();

/// The given number of seconds as a duration of the steady clock, rounded to the nanosecond.
constexpr Instant secondsToInstant(double seconds) {
    return Instant{static_cast<Instant::rep>(seconds * 1e9 + (seconds < 0 ? -0.5 : 0.5))};
}

/// Work that is done at its time whatever loop, wait or box runs then. Destroying it cancels it.
class Alarm {
public:
    virtual ~Alarm() = default;

    /// The one instant at which it is to go off next. One in the past is as soon as possible.
    virtual void set(Instant due) = 0;
    virtual void cancel() = 0;
};

/// Time, events and the keyboard, as the program's long activities see them.
///
/// There is one thread. A long activity is a loop inside an event handler that calls `pump` once
/// a pass; a wait that must let nothing through is a `blockUntil`. Nothing else sleeps.
class Runtime {
public:
    Runtime() = default;
    virtual ~Runtime() = default;
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    /// The steady clock.
    virtual Instant now() const = 0;

    /// The wall clock: seconds since local midnight, 0 <= value < 86400 (a leap second aside).
    virtual double secondsSinceMidnight() const = 0;

    /// The wall clock with its date, in local time.
    virtual QDateTime dateTime() const = 0;

    /// One pass of an activity: runs every pending event; if there was none, sleeps until one
    /// comes, a held key changes, `wakeBy` is reached or the program ends. Answers whether there
    /// was user input among the events.
    virtual bool pump(Instant wakeBy) = 0;

    /// Lets the pending events run once, without sleeping.
    bool yield() { return pump(now()); }

    /// Waits until `end` with the window painted but no user input let through; input keeps its
    /// order and comes with the next pass. An instant in the past returns at once, and so does a
    /// wait when the program ends.
    virtual void blockUntil(Instant end) = 0;

    /// Says of an event of the user's input whether a wait is to end for it.
    using EndsWait = std::function<bool(const QEvent& input)>;

    /// The same, but the wait is over as soon as `ends` is true of what the user does, within a
    /// tenth of a second; that comes with the next pass like all other input. Answers whether it
    /// was.
    virtual bool blockUnless(Instant end, const EndsWait& /*ends*/) {
        blockUntil(end);
        return false;
    }

    /// Does work as if it were user input that came at `at`: in a pass, in order with the user's
    /// keys and clicks, and not in a wait. A box that opens does not hold it back: the work itself
    /// must leave alone what lies behind a box. From any thread.
    virtual void deliver(Instant at, std::function<void()> work) = 0;

    /// Whether keys that were typed ahead during a wait are polled one after the other, as for a
    /// loop whose passes follow each other at once, or all together; answers what it was before.
    virtual bool pollKeysInOrder(bool /*on*/) { return false; }

    /// Does work that a key chose, as a shortcut does: when the keys before it were polled, and
    /// before those behind it are. At once where no keys wait. As with `deliver`, the work must
    /// leave alone what lies behind a box.
    virtual void afterKeys(const std::function<void()>& work) { work(); }

    /// Makes an alarm that is not set yet. Within half a second of its instant it does its work,
    /// which must be short, open no box and let no events run: a note may be due.
    virtual std::unique_ptr<Alarm> makeAlarm(std::function<void()> work) = 0;

    /// Whether the key is down as of this pass. A tap between two passes is down for one of them.
    virtual bool held(KeyCode key) const = 0;

    /// Whether the key, being held, repeated itself in this pass.
    virtual bool repeated(KeyCode key) const = 0;

    /// Asks the program to end: every loop returns at its next pass, a wait at once, and a modal
    /// window without an answer.
    virtual void end() = 0;

    /// Whether the program is ending.
    virtual bool ending() const = 0;

protected:
    /// Saves what must not be lost. To be called when the program ends and when the system says
    /// that it may end the program soon.
    void saveWork();

private:
    friend class SavedAtEnd;
    std::vector<SavedAtEnd*> saved_;
};

/// Work in progress that is saved when the program ends, or may end soon as at a logout: at once,
/// before any loop returns, because the system may not wait for that. May be saved several times.
class SavedAtEnd {
public:
    SavedAtEnd(Runtime& runtime, std::function<void()> save)
        : runtime_(runtime), save_(std::move(save)) {
        runtime_.saved_.push_back(this);
    }
    ~SavedAtEnd() { std::erase(runtime_.saved_, this); }
    SavedAtEnd(const SavedAtEnd&) = delete;
    SavedAtEnd& operator=(const SavedAtEnd&) = delete;

private:
    friend class Runtime;
    Runtime& runtime_;
    std::function<void()> save_;
};

inline void Runtime::saveWork() {
    for (const SavedAtEnd* work : saved_)
        work->save_();
}
