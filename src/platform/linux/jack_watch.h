#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

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

    /// Whether a port is connected to one of a client whose name begins so.
    bool isConnected(const std::string& port, const std::string& client) const;

    /// The ports that send MIDI, but for those that only pass on what others send.
    std::vector<std::string> midiSources() const;

    /// From now on writes to an event descriptor when a port comes or goes or the server ends.
    void reportChanges(int eventDescriptor);

private:
    JackWatch() = default;

    static std::shared_ptr<JackWatch> start();
    std::vector<std::string> connectionsOf(const std::string& port) const;
    void report() const;

    void* client_ = nullptr;
    std::atomic<bool> gone_ = false;
    std::atomic<int> changes_ = -1;  ///< the descriptor
    bool activated_ = false;
};
