#pragma once

#include "audio/message_timeline.h"
#include "audio/sound_mixer.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

/// The two ends of the program's sound: the user-interface thread posts what shall sound, the
/// audio thread renders it, and neither ever waits for the other.
class AudioEngine {
public:
    explicit AudioEngine(double rate);

    double rate() const { return rate_; }

    /// Only while no stream runs. The synthesizer must have been loaded for the same rate.
    void setRate(double rate);
    void setSynthesizer(std::unique_ptr<Synthesizer> synthesizer);
    bool hasSynthesizer() const { return mixer_.hasSynthesizer(); }

    /// User-interface thread. `now` is the instant in nanoseconds of the steady clock. False if
    /// the audio thread does not take anything any more.
    bool message(std::uint32_t packed, std::int64_t now);
    bool reset(std::int64_t now);

    /// User-interface thread: what is to sound at an instant; one in the past is as soon as
    /// possible. False like the others.
    bool plan(std::uint32_t packed, std::int64_t instant);
    bool planReset(std::int64_t instant);
    /// Takes back what was planned for later than now.
    void cancelPlanned(std::int64_t now);

    /// How much later than its instant a message is heard, in nanoseconds.
    std::int64_t delay() const { return timeline_.delay(); }

    bool startTune(std::shared_ptr<Tune> tune, std::int64_t now);
    bool stopTune(std::int64_t now);
    bool startWave(std::shared_ptr<const Wave> wave, std::int64_t now);

    /// Audio thread: the stream wants its next `frames` frames, and asks for them at `now`.
    void render(float* left, float* right, int frames, std::int64_t now);

    /// Audio thread, before it renders: the next frame will be heard at `instant`.
    void streamHeard(std::int64_t instant) { timeline_.heard(instant, delivered_); }

    /// No stream runs, and one is about to.
    void streamOpens() { timeline_.setRate(rate_); }

    /// Audio thread: what was rendered is being played from `now` on.
    void streamBegan(std::int64_t now) { timeline_.begin(now); }

    /// Audio thread: the stream's buffers ran empty, or are of another size from now on.
    void streamInterrupted() { timeline_.restart(); }
    void streamResized() { timeline_.resize(); }

    /// Audio thread: whether something that was planned is still to sound.
    bool hasPlanned() { return timeline_.hasPlanned(); }

    /// Audio thread: whether nothing has sounded for a few seconds and nothing is waiting.
    bool isIdle() const;

    /// Audio thread: blocks until something is posted or `wake` is called. The stream's buffers
    /// run empty meanwhile, which is inaudible, and an idle program does not use the processor.
    void waitForPost();
    void wake();

    /// When the stream last asked for frames; the largest value while `waitForPost` blocks.
    std::int64_t lastRequest() const { return lastRequest_.load(); }

private:
    enum class Slot { Tune, Wave };

    /// Something that the audio thread may be reading until it has taken the event that ends it.
    struct Kept {
        Slot slot;
        std::shared_ptr<const void> object;
        std::uint64_t endedBy;  // number of that event, or kNotEnded
    };

    bool post(SoundEvent event, std::int64_t now);
    void endKept(Slot slot);
    void freeEnded();
    void renderBlock();

    std::atomic<double> rate_;
    MessageTimeline timeline_;
    std::vector<Kept> kept_;

    SoundMixer mixer_;
    SoundMixer::Side left_{};
    SoundMixer::Side right_{};
    int used_ = SoundMixer::kBlock;  // frames of the block already handed out
    std::int64_t rendered_ = 0;
    std::int64_t delivered_ = 0;

    std::atomic<std::uint32_t> posts_ = 0;
    std::atomic<std::int64_t> lastRequest_;
};
