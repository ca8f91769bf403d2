#pragma once

#include <RtMidi.h>

#include <exception>
#include <iostream>
#include <mutex>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

/// What the MIDI outputs and inputs have in common in the use of RtMidi, which throws, prints and
/// crashes where there is nothing to talk to.
namespace rtmidi_calls {

constexpr const char* kClientName = "Cantavista";
constexpr RtMidi::Api kApis[] = {RtMidi::LINUX_ALSA, RtMidi::UNIX_JACK};

/// RtMidi prints to std::cerr what it also throws or reports. There is one such stream for all
/// threads; it is mute while any of them is in a call, which in a sound library may never return.
class MutedErrorStream {
public:
    MutedErrorStream() {
        const std::lock_guard lock(mutex_);
        if (calls_++ == 0)
            previous_ = std::cerr.rdbuf(&nowhere_);
    }
    ~MutedErrorStream() {
        const std::lock_guard lock(mutex_);
        if (--calls_ == 0)
            std::cerr.rdbuf(previous_);
    }
    MutedErrorStream(const MutedErrorStream&) = delete;
    MutedErrorStream& operator=(const MutedErrorStream&) = delete;

private:
    /// Keeps nothing, so that several threads may write to it.
    class Nowhere : public std::streambuf {
        int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    };

    static inline std::mutex mutex_;
    static inline int calls_ = 0;
    static inline std::streambuf* previous_ = nullptr;
    /// Never destroyed: a call that hangs may write to it as the program ends.
    static inline Nowhere& nowhere_ = *new Nowhere;
};

/// Runs what RtMidi may throw out of or print from; answers whether it went well.
template <typename Work>
bool guarded(Work work) {
    const MutedErrorStream muted;
    try {
        return work();
    } catch (const std::exception&) {
        return false;
    }
}

/// With a callback RtMidi reports failures to it instead of throwing.
inline void noteFailure(RtMidiError::Type type, const std::string&, void* failed) {
    if (failed && type != RtMidiError::WARNING && type != RtMidiError::DEBUG_WARNING)
        *static_cast<bool*>(failed) = true;
}

/// Whether a port is one of the program's, whose clients are numbered, or what a bridge of JACK
/// makes of one: "a2j:Cantavista [129] (capture): Cantavista".
inline bool isOwn(const std::string& port) {
    return port.starts_with(kClientName) ||
           std::string_view(port).substr(port.find(':') + 1).starts_with(kClientName);
}

/// Asks for the count first: without a server, asking for a name crashes.
inline std::vector<std::string> portNames(RtMidi& ports) {
    std::vector<std::string> names;
    guarded([&] {
        const unsigned int count = ports.getPortCount();
        for (unsigned int i = 0; i < count; ++i)
            names.push_back(ports.getPortName(i));
        return true;
    });
    return names;
}

inline std::optional<unsigned int> portNumber(RtMidi& ports, const std::string& name) {
    const auto names = portNames(ports);
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i] == name)
            return static_cast<unsigned int>(i);
    return std::nullopt;
}

/// Opens a port by its number; answers whether it is open.
template <typename Ports>
bool openPort(Ports& ports, unsigned int number) {
    bool failed = false;
    const bool opened = guarded([&] {
        ports.setErrorCallback(noteFailure, &failed);
        ports.openPort(number, kClientName);
        return !failed && ports.isPortOpen();
    });
    ports.setErrorCallback(noteFailure);
    return opened;
}

}  // namespace rtmidi_calls
