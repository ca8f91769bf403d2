#pragma once

#include "platform/wave_renderer.h"

/// Renders with the mixer and the synthesizer that play live, so that a file sounds the same.
class MixerWaveRenderer : public WaveRenderer {
public:
    std::unique_ptr<WaveRendering> start(std::vector<TimedMessage> messages,
                                         std::int64_t endMs) override;
    bool instrumentsDamaged() const override { return damaged_; }

private:
    bool damaged_ = false;
};
