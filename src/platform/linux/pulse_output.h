#pragma once

#include <cstdint>
#include <functional>
#include <memory>

/// A stereo stream to PulseAudio, or to what speaks its protocol.
///
/// One thread reads the server's requests, renders and writes the answer, so that a busy machine
/// has one thread to wake for a request and not two. It asks for real-time priority. The buffers
/// are short, so that a key sounds at once. They grow for as long as what sounds is planned, which
/// a busy server must not tear and which is heard no later for it; and for good when the server has
/// run out of frames twice.
class PulseOutput {
public:
    /// What is played. All of it is called on the stream's thread.
    struct Source {
        std::function<void(float* left, float* right, int frames)> render;
        /// In so many nanoseconds the next frame that is rendered will be heard.
        std::function<void(std::int64_t latency)> latency;
        /// What was rendered is being played.
        std::function<void()> began;
        /// The buffers ran empty, or the stream moved to another device.
        std::function<void()> interrupted;
        /// The buffers are of another size from now on.
        std::function<void()> resized;
        /// Blocks while there is nothing to play. The buffers run empty meanwhile.
        std::function<bool()> waitForWork;
        /// Whether something that was planned is still to sound.
        std::function<bool()> hasPlanned;
    };

    struct Setup {
        int rate;          ///< frames per second
        int bufferFrames;  ///< between the program and the device
        int blockFrames;   ///< rendered at once, at most
    };

    /// Answers when the stream is being played, or with nothing if there is no server. A server
    /// that hangs holds the call up.
    static std::unique_ptr<PulseOutput> open(Source source, const Setup& setup);

    /// `waitForWork` must not block any more.
    ~PulseOutput();
    PulseOutput(const PulseOutput&) = delete;
    PulseOutput& operator=(const PulseOutput&) = delete;

    /// Whether the server ended the stream.
    bool ended() const;

private:
    struct Stream;
    explicit PulseOutput(std::unique_ptr<Stream> stream);
    std::unique_ptr<Stream> stream_;
};
