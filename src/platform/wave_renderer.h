#pragma once

#include <cstdint>
#include <memory>
#include <vector>

/// A packed short message and when it is due, in milliseconds from the start.
struct TimedMessage {
    std::int64_t ms = 0;
    std::uint32_t message = 0;

    bool operator==(const TimedMessage&) const = default;
};

/// A rendering under way. Destroying it earlier gives it up.
class WaveRendering {
public:
    /// Stereo frames: left and right in turn.
    using Frames = std::vector<std::int16_t>;

    virtual ~WaveRendering() = default;

    /// The next stretch of sound, which stays valid until the next call; without frames when the
    /// last note has died away.
    virtual const Frames& next() = 0;
};

/// The built-in synthesizer working on its own: faster than real time, and without any device.
class WaveRenderer {
public:
    static constexpr int kFramesPerSecond = 44100;
    /// After the last message the echo is rendered until it is inaudible, but no longer than this.
    static constexpr int kLongestTailMs = 10'000;

    virtual ~WaveRenderer() = default;

    /// Begins to render messages, which are in the order of their times, up to `endMs` and on until
    /// they have died away. Nothing if there are no instruments to play them with.
    virtual std::unique_ptr<WaveRendering> start(std::vector<TimedMessage> messages,
                                                 std::int64_t endMs) = 0;

    /// Whether there are instruments, but none that can be read.
    virtual bool instrumentsDamaged() const { return false; }
};
