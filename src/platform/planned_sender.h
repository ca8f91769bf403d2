#pragma once

#include "platform/runtime.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

/// Sends what is planned at its instant, on a thread of its own, for outputs that have no plan
/// themselves. The thread starts with the first plan. Used from one thread.
class PlannedSender {
public:
    using Message = std::optional<std::uint32_t>;  ///< nothing for a reset

    /// `transmit` sends to the output and answers with a code, 0 for success; it is called by one
    /// thread at a time. `prepareThread` is called once on the sending thread.
    PlannedSender(std::function<int(Message)> transmit, std::function<void()> prepareThread)
        : transmit_(std::move(transmit)), prepareThread_(std::move(prepareThread)) {}
    /// What is planned is not sent any more.
    ~PlannedSender() { stop(); }
    PlannedSender(const PlannedSender&) = delete;
    PlannedSender& operator=(const PlannedSender&) = delete;

    /// Sends now, after everything planned until now.
    int send(Message message);
    void plan(Message message, Instant at);
    /// Takes back what is planned for later than now.
    void cancel();

    /// Takes everything back and ends the thread; only what is sent now is sent after that.
    void stop();

    /// The code that answered to the planned message that was sent last.
    int plannedCode() const { return plannedCode_.load(); }

    /// Runs `work` while nothing is sent.
    template <typename Work>
    auto exclusively(Work work) {
        const std::lock_guard lock(mutex_);
        return work();
    }

private:
    /// A sleeping thread is woken a little late; the rest is a busy wait.
    static constexpr Instant kBusyWait = std::chrono::microseconds(1500);

    using Clock = std::chrono::steady_clock;
    static Instant now() {
        return std::chrono::duration_cast<Instant>(Clock::now().time_since_epoch());
    }

    void run();
    void sendDue();

    const std::function<int(Message)> transmit_;
    const std::function<void()> prepareThread_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::multimap<Instant, Message> planned_;
    std::atomic<int> plannedCode_ = 0;
    bool ending_ = false;
    std::thread thread_;
};

inline void PlannedSender::stop() {
    if (!thread_.joinable())
        return;
    exclusively([this] {
        ending_ = true;
        planned_.clear();
    });
    changed_.notify_one();
    thread_.join();
    ending_ = false;
}

inline int PlannedSender::send(Message message) {
    return exclusively([&] {
        sendDue();
        return transmit_(message);
    });
}

inline void PlannedSender::plan(Message message, Instant at) {
    exclusively([&] { planned_.emplace(at, message); });
    if (!thread_.joinable())
        thread_ = std::thread([this] { run(); });
    changed_.notify_one();
}

inline void PlannedSender::cancel() {
    exclusively([this] { planned_.erase(planned_.upper_bound(now()), planned_.end()); });
}

inline void PlannedSender::sendDue() {
    while (!planned_.empty() && planned_.begin()->first <= now()) {
        const Message message = planned_.extract(planned_.begin()).mapped();
        plannedCode_.store(transmit_(message));
    }
}

inline void PlannedSender::run() {
    prepareThread_();
    std::unique_lock lock(mutex_);
    while (!ending_) {
        if (planned_.empty()) {
            changed_.wait(lock);
            continue;
        }
        const Instant due = planned_.begin()->first;
        if (now() < due - kBusyWait) {
            const Clock::time_point wake(std::chrono::duration_cast<Clock::duration>(due));
            changed_.wait_until(lock, wake - kBusyWait);
            continue;
        }
        lock.unlock();
        while (now() < due) {
        }
        lock.lock();
        sendDue();
    }
}
