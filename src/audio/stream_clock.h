#pragma once

#include <cstdint>

/// Relates the steady clock to the frames of an audio stream. A sound system asks for frames in
/// jittering bursts, by a clock of its own; this one draws a smooth line through the instants of
/// the requests and says which frame belongs to an instant, a constant delay later.
class StreamClock {
public:
    explicit StreamClock(double framesPerSecond);

    /// The stream stood still and its buffers ran empty: the next request starts a new line.
    void restart() { running_ = carried_ = false; }

    /// The stream has begun to play at `now`, some time after it first asked for frames.
    void begin(std::int64_t now);

    /// The buffers are of another size from now on, and nothing that they held is lost: requests
    /// come sooner or later than before, and each frame is heard when it would have been.
    void resize();

    /// The stream asks at `now` (nanoseconds of the steady clock) for `count` frames from `frame`.
    void request(std::int64_t now, std::int64_t frame, int count);

    /// The sound system says that a frame not yet asked for is heard at `instant`. Where it never
    /// does, what a stream asks for at once when it starts tells how far ahead it asks.
    void heard(std::int64_t instant, std::int64_t frame);

    /// The frame at which a thing of the instant `time` sounds, the constant delay included.
    double frameFor(std::int64_t time) const;

    /// The same for a thing that was known ahead. It is heard so much later than its instant that
    /// neither a late thread nor a stream whose buffers grow can move it.
    double plannedFrameFor(std::int64_t time) const;

    /// How much later than its instant such a thing is heard, in nanoseconds, with the time that
    /// frames spend in the stream's buffers, as far as the stream has shown it.
    std::int64_t plannedHeardDelay() const;

private:
    void start(std::int64_t now, std::int64_t frame);
    void follow(double residual, std::int64_t frame, int count);
    void learnEarliness(double residual, std::int64_t frame);
    double timeLost(double residual, double passed);
    void learnLead();
    double instantOf(double frame) const;
    double heardAt(double frame) const;
    /// From an instant to the (smoothed) request for its frame. It only grows, when the stream
    /// asks further ahead than ever before.
    double delayNanoseconds() const;

    double nominalFrameTime_;  // nanoseconds
    double frameTime_;         // the same by the steady clock
    bool running_ = false;
    double lineFrame_ = 0;  // a point on the line
    double lineTime_ = 0;
    double weight_ = 0;  // frames averaged into the line
    std::int64_t startTime_ = 0;
    std::int64_t startFrame_ = 0;
    // Frames asked for at once by a stream that starts empty, less those of its pause after that.
    double lead_ = 0;
    bool leadKnown_ = false;  // measured, not assumed
    bool leadMeasured_ = false;
    // From the request for a frame, by the line, until it is heard, in nanoseconds.
    double lag_ = 0;
    bool told_ = false;
    bool guessed_ = false;         // since the stream stood still, from what was told before
    std::int64_t heardFrame_ = 0;  // of the last statement
    std::int64_t heardSince_ = 0;  // of the first statement averaged
    double heardShift_ = 0;        // how far off the last statement was, if that was far
    std::int64_t shiftFrame_ = 0;  // of the first one that was so
    // When frames are heard, while the line for buffers of another size is being drawn: a point.
    bool carried_ = false;
    double carriedFrame_ = 0;
    double carriedTime_ = 0;
    double early_ = 0;  // nanoseconds: how far before the line requests come
    // Of requests that follow at once only the first tells how time passes.
    std::int64_t burstTime_ = 0;
    std::int64_t burstFrame_ = 0;
    int largestRequest_ = 0;
    double leastResidual_ = 0;  // of the requests that are watched for lost time
    double watchedFrames_ = 0;
};
