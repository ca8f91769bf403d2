#include "audio/fluid_synth.h"

#include <mutex>

bool FluidSynth::make() {
    // The first of a process fills the library's tables, which a second one would not wait for.
    static std::mutex oneAtATime;
    const std::lock_guard lock(oneAtATime);
    synth.reset(new_fluid_synth(settings.get()));
    return synth != nullptr;
}
