#include "audio/fluid_synth.h"

#include <mutex>

FluidSettings makeFluidSettings() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (const int level : {FLUID_PANIC, FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG})
            fluid_set_log_function(
                level, [](int, const char*, void*) {}, nullptr);
    });
    return {new_fluid_settings(), delete_fluid_settings};
}

bool FluidSynth::make() {
    // The first synthesizer of a process fills tables of the library, and another thread's would
    // not wait until they are filled.
    static std::mutex oneAtATime;
    const std::lock_guard lock(oneAtATime);
    synth.reset(new_fluid_synth(settings.get()));
    return synth != nullptr;
}
