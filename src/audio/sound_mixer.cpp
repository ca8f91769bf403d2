#include "audio/sound_mixer.h"

#include "audio/tune.h"
#include "audio/wave.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr float kInaudible = 3e-5F;
constexpr double kEchoSeconds = 0.25;
constexpr float kKnee = 0.8F;

/// Soft clipping: samples up to the knee stay as they are, larger ones are compressed to below 1,
/// so that a full chord is not clipped harshly.
float softClipped(float sample) {
    const float size = std::abs(sample);
    if (size <= kKnee)
        return sample;
    constexpr float kRoom = 1.0F - kKnee;
    const float over = size - kKnee;
    return std::copysign(kKnee + kRoom * over / (kRoom + over), sample);
}

float peakOf(const SoundMixer::Side& side) {
    float peak = 0;
    for (const float sample : side)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

}  // namespace

void SoundMixer::setSynthesizer(std::unique_ptr<Synthesizer> synthesizer) {
    if (synthesizer && synthesizer_)
        synthesizer->takePrograms(*synthesizer_);
    synthesizer_ = std::move(synthesizer);
}

void SoundMixer::apply(const SoundEvent& event) {
    using Part = Synthesizer::Part;
    switch (event.kind) {
        case SoundEvent::Kind::Message:
            if (synthesizer_)
                synthesizer_->message(Part::Output, event.message);
            break;
        case SoundEvent::Kind::Reset:
            if (synthesizer_)
                synthesizer_->silence(Part::Output);
            break;
        case SoundEvent::Kind::StartTune:
            endTune();
            if (synthesizer_) {
                synthesizer_->restore(Part::Tune);
                tune_ = event.tune;
            }
            break;
        case SoundEvent::Kind::StopTune:
            endTune();
            break;
        case SoundEvent::Kind::StartWave:
            wave_ = event.wave;
            waveFrame_ = 0;
            break;
        case SoundEvent::Kind::CancelPlanned:
            break;
    }
    synthesizerSounds_ = synthesizer_ != nullptr;
    inaudibleFrames_ = 0;
    silentFrames_ = 0;
}

void SoundMixer::endTune() {
    if (synthesizer_)
        synthesizer_->silence(Synthesizer::Part::Tune);
    tune_ = nullptr;
    tuneFrame_ = 0;
}

void SoundMixer::render(Side& left, Side& right) {
    left.fill(0);
    right.fill(0);
    if (tune_)
        advanceTune();
    if (!synthesizerSounds_ && !wave_) {
        silentFrames_ += kBlock;
        return;
    }
    silentFrames_ = 0;
    if (synthesizerSounds_)
        renderSynthesizer(left, right);
    if (wave_)
        addWave(left, right);
    std::transform(left.begin(), left.end(), left.begin(), softClipped);
    std::transform(right.begin(), right.end(), right.begin(), softClipped);
}

void SoundMixer::advanceTune() {
    synthesizerSounds_ = true;
    inaudibleFrames_ = 0;
    const double blockEnd = static_cast<double>(tuneFrame_ + kBlock) / rate_;
    for (const std::uint32_t message : tune_->messagesUntil(blockEnd))
        synthesizer_->message(Synthesizer::Part::Tune, message);
    tuneFrame_ += kBlock;
    // What still rings after the last event ends by itself.
    if (tune_->over())
        tune_ = nullptr;
}

void SoundMixer::renderSynthesizer(Side& left, Side& right) {
    synthesizer_->render(left.data(), right.data());
    const bool inaudible =
        !synthesizer_->anyVoice() && std::max(peakOf(left), peakOf(right)) < kInaudible;
    inaudibleFrames_ = inaudible ? inaudibleFrames_ + kBlock : 0;
    synthesizerSounds_ = static_cast<double>(inaudibleFrames_) < kEchoSeconds * rate_;
}

void SoundMixer::addWave(Side& left, Side& right) {
    const std::size_t count = std::min<std::size_t>(kBlock, wave_->frames() - waveFrame_);
    const float* samples = wave_->samples.data() + 2 * waveFrame_;
    for (std::size_t i = 0; i < count; ++i) {
        left[i] += samples[2 * i];
        right[i] += samples[2 * i + 1];
    }
    waveFrame_ += count;
    if (waveFrame_ == wave_->frames())
        wave_ = nullptr;
}
