#pragma once

#include <fluidsynth.h>

#include <memory>

using FluidSettings = std::unique_ptr<fluid_settings_t, decltype(&delete_fluid_settings)>;

/// Default settings of FluidSynth, which from then on writes nothing to the terminal. Null if
/// memory runs out.
FluidSettings makeFluidSettings();

/// A FluidSynth synthesizer and the settings that it was made with.
struct FluidSynth {
    FluidSettings settings = makeFluidSettings();
    std::unique_ptr<fluid_synth_t, decltype(&delete_fluid_synth)> synth{nullptr,
                                                                        delete_fluid_synth};

    /// Makes the synthesizer, once the settings are as they should be; false if that fails.
    bool make();
};
