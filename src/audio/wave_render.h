#pragma once

#include "platform/wave_renderer.h"

#include <functional>
#include <string>
#include <utility>

/// Renders with the mixer and the synthesizer that play live, so that a file sounds the same.
class MixerWaveRenderer : public WaveRenderer {
public:
    /// The path of the soundfont is asked for at each start; it may be empty.
    explicit MixerWaveRenderer(std::function<std::string()> soundfont)
        : soundfont_(std::move(soundfont)) {}

    std::unique_ptr<WaveRendering> start(std::vector<TimedMessage> messages,
                                         std::int64_t endMs) override;
    bool instrumentsDamaged() const override { return damaged_; }

private:
    std::function<std::string()> soundfont_;
    bool damaged_ = false;
};
