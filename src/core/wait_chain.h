#pragma once

#include "platform/runtime.h"

#include <cstdint>

/// The instants of waits that follow each other. Each ends where the one before ended by the rule
/// of the waits, not where the thread woke from it, so that a thread that wakes late neither moves
/// nor stretches what sounds; and each is known before the first of them begins, so that what
/// follows it can be sent ahead.
///
/// It only says when waits end; its user waits. What runs between two waits takes no time, except
/// user input that is handled for longer than `kHandlingTime`. A chain that is more than
/// `kLongestDelay` behind the clock begins anew instead of catching up.
class WaitChain {
public:
    static constexpr Instant kLongestDelay = std::chrono::milliseconds(500);
    static constexpr Instant kHandlingTime = std::chrono::milliseconds(20);

    /// Begins at the clock's reading.
    explicit WaitChain(Runtime& runtime) : runtime_(runtime) { restart(); }
    void restart();

    /// Lets the pending events run once.
    void pass();

    /// How far the clock is past the end of the last wait.
    Instant delay() const { return runtime_.now() - reached_; }

    /// The end of the last wait: where the next one begins.
    Instant reached() const { return reached_; }

    /// The end of a wait as `FunzioniMM::WaitSeconds` makes it.
    Instant afterSeconds(double seconds);

    /// The end of a wait of whole milliseconds.
    Instant afterMs(std::int64_t ms);

private:
    void compareWithClock();
    void advance(Instant duration);

    Runtime& runtime_;
    Instant reached_{0};
    double clock_ = 0;  ///< seconds since midnight at that instant
};
