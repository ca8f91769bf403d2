#pragma once

#include <fluidsynth.h>

#include <memory>

/// A synthesizer of the library with the settings it was made with.
struct FluidSynth {
    std::unique_ptr<fluid_settings_t, decltype(&delete_fluid_settings)> settings{
        new_fluid_settings(), delete_fluid_settings};
    std::unique_ptr<fluid_synth_t, decltype(&delete_fluid_synth)> synth{nullptr,
                                                                        delete_fluid_synth};

    /// Makes the synthesizer, once the settings are as they should be; false if that fails.
    bool make();
};
