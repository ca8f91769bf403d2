#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>

/// Notices the end of the JACK server that runs now. The library itself goes on as if nothing had
/// happened, and crashes when a client of a server that is gone is closed.
class JackWatch {
public:
    /// Nothing if no server runs. Never starts one.
    static std::unique_ptr<JackWatch> start();
    ~JackWatch();
    JackWatch(const JackWatch&) = delete;
    JackWatch& operator=(const JackWatch&) = delete;

    double sampleRate() const;
    bool serverGone() const { return gone_->load(); }

    /// How many connections a port has in the graph that the server runs; 0 for an unknown port. A
    /// new connection is in it from the beginning of the server's next cycle.
    std::size_t connectionCount(const std::string& port) const;

private:
    JackWatch() = default;

    void* client_ = nullptr;
    /// Left to the library if its server is gone, as it may still write there.
    std::unique_ptr<std::atomic<bool>> gone_ = std::make_unique<std::atomic<bool>>(false);
};
