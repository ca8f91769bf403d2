#pragma once

#include <functional>
#include <memory>

/// Watches for the system's signals that ask a program to end, as long as it lives.
class EndSignals {
public:
    virtual ~EndSignals() = default;
};

/// Has `end` called from the event loop, blocking waits included, at every such signal. Each
/// system's folder implements it; one that has no signals, or that fails, answers with nothing.
std::unique_ptr<EndSignals> watchEndSignals(std::function<void()> end);
