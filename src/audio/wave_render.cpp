#include "audio/wave_render.h"

#include "audio/sound_mixer.h"
#include "audio/synthesizer.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kBlock = SoundMixer::kBlock;
/// About a tenth of a second.
constexpr int kBlocksAtOnce = 64;
constexpr std::int64_t kMsPerSecond = 1000;

constexpr std::int64_t frameAt(std::int64_t ms) {
    return ms * WaveRenderer::kFramesPerSecond / kMsPerSecond;
}

/// Rounded. Above 0 the conversion to a whole number does it, at a fraction of a rounding's cost.
std::int16_t quantized(float sample) {
    constexpr float kFullScale = 32767;
    constexpr int kLift = 32768;
    const float scaled = std::clamp(sample, -1.0F, 1.0F) * kFullScale;
    return static_cast<std::int16_t>(static_cast<int>(scaled + (kLift + 0.5F)) - kLift);
}

class MixerRendering : public WaveRendering {
public:
    MixerRendering(std::unique_ptr<Synthesizer> synthesizer, std::vector<TimedMessage> messages,
                   std::int64_t endMs)
        : mixer_(WaveRenderer::kFramesPerSecond),
          messages_(std::move(messages)),
          end_(frameAt(endMs)) {
        mixer_.setSynthesizer(std::move(synthesizer));
    }

    const Frames& next() override {
        frames_.clear();
        for (int block = 0; block < kBlocksAtOnce && !over(); ++block)
            renderBlock();
        return frames_;
    }

private:
    bool over() const {
        if (sent_ < messages_.size() || frame_ < end_)
            return false;
        return mixer_.silentFrames() > 0 || frame_ >= end_ + frameAt(WaveRenderer::kLongestTailMs);
    }

    /// A message takes effect at the block's beginning that is closest to it.
    void renderBlock() {
        while (sent_ < messages_.size() && frameAt(messages_[sent_].ms) < frame_ + kBlock / 2) {
            SoundEvent event;
            event.message = messages_[sent_++].message;
            mixer_.apply(event);
        }
        mixer_.render(left_, right_);
        for (std::size_t i = 0; i < left_.size(); ++i) {
            frames_.push_back(quantized(left_[i]));
            frames_.push_back(quantized(right_[i]));
        }
        frame_ += kBlock;
    }

    SoundMixer mixer_;
    std::vector<TimedMessage> messages_;
    std::int64_t end_;
    std::size_t sent_ = 0;
    std::int64_t frame_ = 0;
    SoundMixer::Side left_{};
    SoundMixer::Side right_{};
    Frames frames_;
};

}  // namespace

std::unique_ptr<WaveRendering> MixerWaveRenderer::start(std::vector<TimedMessage> messages,
                                                        std::int64_t endMs) {
    const std::string soundfont = soundfont_();
    auto synthesizer = Synthesizer::load(soundfont, kFramesPerSecond);
    damaged_ = !synthesizer && soundfontExists(soundfont);
    if (!synthesizer)
        return nullptr;
    return std::make_unique<MixerRendering>(std::move(synthesizer), std::move(messages), endMs);
}
