#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Sleeps until MIDI ports may have come or gone: the ALSA sequencer announces it, JACK's client
/// reports it, and of a system that does not run yet a file tells when it starts. Costs nothing
/// meanwhile. There is one for the process.
class MidiPortChanges {
public:
    struct Change {
        bool starts = false;              ///< a sound system may be starting, and be there soon
        std::vector<std::string> exited;  ///< ALSA's ports that went, as "20:0"
    };

    MidiPortChanges();
    ~MidiPortChanges();
    MidiPortChanges(const MidiPortChanges&) = delete;
    MidiPortChanges& operator=(const MidiPortChanges&) = delete;

    /// Returns at a change, after `wake`, or when the time is over.
    Change wait(std::optional<std::chrono::milliseconds> atMost);

    /// From any thread.
    static void wake();

private:
    class Announcements;

    bool aSystemStarts() const;

    int files_;  ///< inotify's descriptor
    std::unique_ptr<Announcements> alsa_;
};
