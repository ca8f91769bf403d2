#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
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

    /// Which port has a name: one that comes under the name of one that went is another port.
    /// Nothing if there is none. From the thread that follows the changes.
    struct Port {
        std::uint64_t id = 0;        ///< the server may give it again once the port went
        std::size_t departures = 0;  ///< of the ports that had this id before

        bool operator==(const Port&) const = default;
    };
    std::optional<Port> portNamed(const std::string& name);

    /// The ports that send MIDI, but for those that only pass on what others send.
    std::vector<std::string> midiSources() const;

    /// From now on writes to an event descriptor when a port comes or goes or the server ends.
    void reportChanges(int eventDescriptor);

private:
    JackWatch() = default;

    static std::shared_ptr<JackWatch> start();
    void activate();
    void portChanged(std::uint32_t port, bool comes);
    void report() const;

    void* client_ = nullptr;
    std::atomic<bool> gone_ = false;
    std::atomic<int> changes_ = -1;  ///< the descriptor
    bool activated_ = false;
    std::mutex mutex_;
    std::map<std::uint64_t, std::size_t> departures_;
};
