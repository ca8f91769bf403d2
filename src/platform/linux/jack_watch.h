#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>

/// Notices the end of the JACK server that runs now. The library itself goes on as if nothing had
/// happened, and crashes when a client of a server that is gone is closed.
///
/// There is one watch for each run of a server, shared by all who ask. It is never closed: closing
/// one right after another client of this program sometimes waited for ever in the library.
class JackWatch {
public:
    /// Nothing if no server runs. Never starts one. From any thread.
    static std::shared_ptr<JackWatch> ofRunningServer();
    JackWatch(const JackWatch&) = delete;
    JackWatch& operator=(const JackWatch&) = delete;

    double sampleRate() const;
    bool serverGone() const { return gone_.load(); }

    /// How many connections a port has in the graph that the server runs; 0 for an unknown port. A
    /// new connection is in it from the beginning of the server's next cycle.
    std::size_t connectionCount(const std::string& port) const;

private:
    JackWatch() = default;

    static std::shared_ptr<JackWatch> start();

    void* client_ = nullptr;
    std::atomic<bool> gone_ = false;
};
