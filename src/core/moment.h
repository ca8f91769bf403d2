#pragma once

#include "platform/runtime.h"

#include <functional>
#include <memory>

/// The moment for which something is on show, as a verdict beside an answer. It is over by itself,
/// whatever loop, wait or box runs then; nothing waits for that.
class Moment {
public:
    static constexpr Instant kLength = std::chrono::milliseconds(800);

    /// `over` is called once for each moment that has begun, from wherever events run.
    Moment(Runtime& runtime, std::function<void()> over);

    /// Begins a moment, or the one that lasts anew.
    void begin();
    /// Ends the moment now, if one lasts.
    void end();

private:
    Runtime& runtime_;
    std::function<void()> over_;
    bool lasts_ = false;
    std::unique_ptr<Alarm> alarm_;
};
