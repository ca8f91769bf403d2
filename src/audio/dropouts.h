#pragma once

#include <cstdint>

/// Tells from a stream's requests alone that its buffers ran empty, for sound systems that fill
/// them again without a word. All instants are nanoseconds of the steady clock.
class BufferLevel {
public:
    /// The buffers are empty and nothing was to be heard.
    void restart() { *this = {}; }

    /// The stream asks at `now` for `frames`, into buffers that hold `capacity`. Whether they had
    /// run empty before.
    bool ranEmpty(std::int64_t now, int frames, int capacity, double rate);

private:
    bool running_ = false;
    std::int64_t last_ = 0;
    double ahead_ = 0;  // frames that were in the buffers then, with those asked for
};

/// Decides when an output that runs out of frames needs larger buffers: after two dropouts, each no
/// longer after the last than half a minute. What follows at once belongs to the same dropout, and
/// the start is uneven.
class DropoutCount {
public:
    void streamBegan(std::int64_t now) { last_ = now; }

    /// A dropout happened. Whether the buffers must become larger because of it, which is so once.
    bool callsForMore(std::int64_t now);

private:
    std::int64_t last_ = 0;
    int count_ = 0;
    bool called_ = false;
};
