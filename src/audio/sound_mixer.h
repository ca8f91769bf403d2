#pragma once

#include "audio/sound_event.h"
#include "audio/synthesizer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

/// Everything that sounds, rendered in blocks of 64 frames: the synthesizer, the tune that plays
/// on it, and one wave. It belongs to the audio thread. While nothing sounds it renders nothing.
class SoundMixer {
public:
    static constexpr int kBlock = Synthesizer::kBlockFrames;
    using Side = std::array<float, kBlock>;

    explicit SoundMixer(double rate) : rate_(rate) {}

    /// Only while no stream runs.
    void setRate(double rate) { rate_ = rate; }

    /// Only while no stream runs. Without a synthesizer, waves still sound.
    void setSynthesizer(std::unique_ptr<Synthesizer> synthesizer);
    bool hasSynthesizer() const { return synthesizer_ != nullptr; }

    void apply(const SoundEvent& event);
    void render(Side& left, Side& right);

    /// For how many frames nothing has sounded.
    std::int64_t silentFrames() const { return silentFrames_; }
    void resetSilentFrames() { silentFrames_ = 0; }

private:
    void advanceTune();
    void endTune();
    void renderSynthesizer(Side& left, Side& right);
    void addWave(Side& left, Side& right);

    double rate_;
    std::unique_ptr<Synthesizer> synthesizer_;
    bool synthesizerSounds_ = false;    // a voice or reverberation
    std::int64_t inaudibleFrames_ = 0;  // of the synthesizer while it still counts as sounding
    std::int64_t silentFrames_ = 0;     // of the whole mixer
    Tune* tune_ = nullptr;
    std::int64_t tuneFrame_ = 0;
    const Wave* wave_ = nullptr;
    std::size_t waveFrame_ = 0;
};
