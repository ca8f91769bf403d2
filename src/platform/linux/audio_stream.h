#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

class AudioEngine;

/// Opens the machine's audio output for an engine and keeps it open. All of it happens on a thread
/// of its own, so that neither a slow soundfont nor a sound server that hangs holds up the program.
/// It begins with `begin` or the first question about the stream, so that it does not take the
/// processor from the first window.
class AudioStream {
public:
    struct Setup {
        std::string soundfont;             ///< path; empty or unreadable: no synthesizer
        std::vector<std::string> drivers;  ///< tried in this order
        int periodFrames = 384;            ///< asked for at once; 256 costs half as much again
        /// An attempt to open that takes longer counts as failed.
        std::chrono::milliseconds openTimeout = std::chrono::seconds(3);
    };

    enum class Status { Opening, Running, Failed };

    AudioStream(std::shared_ptr<AudioEngine> engine, Setup setup);
    ~AudioStream();
    AudioStream(const AudioStream&) = delete;
    AudioStream& operator=(const AudioStream&) = delete;

    /// Begins to open it, unless that was begun; returns at once.
    void begin() const;

    /// An attempt to open that exceeds `openTimeout` counts as failed until it ends after all.
    Status status() const;

    /// Whether `wait` would wait.
    bool stillOpening() const;

    /// Waits until the attempt to open has ended, but no longer than `openTimeout` or `most` after
    /// it was begun.
    Status wait(std::chrono::milliseconds most = std::chrono::milliseconds::max()) const;

    /// Tries once more after a failure; without one, does nothing.
    void retry();

    /// Opens the stream anew if it has stopped asking for frames, or with larger buffers if it has
    /// run out of them repeatedly.
    void revive();

    /// Known once the stream does not open any more.
    bool hasSynthesizer() const;

    /// Whether there is a soundfont, which without a synthesizer is damaged.
    bool hasSoundfont() const;

    /// The drivers worth trying, the best first.
    static std::vector<std::string> usualDrivers();

private:
    struct Core;
    std::shared_ptr<Core> core_;
};
