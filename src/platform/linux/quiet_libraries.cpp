#include "platform/linux/quiet_libraries.h"

#include <fluidsynth.h>

#include <alsa/asoundlib.h>
#include <cstdlib>
#include <jack/jack.h>
#include <mutex>

namespace {

void dropAlsaError(const char*, int, const char*, int, const char*, ...) {}
void dropJackText(const char*) {}
void dropFluidText(int, const char*, void*) {}

}  // namespace

void quietLibraries() {
    static std::once_flag once;
    std::call_once(once, [] {
        constexpr int kKeepIfSet = 0;
        setenv("JACK_NO_START_SERVER", "1", kKeepIfSet);
        setenv("PULSE_PROP_OVERRIDE", "application.name='Cantavista' media.name='Cantavista'",
               kKeepIfSet);
        snd_lib_error_set_handler(dropAlsaError);
        jack_set_error_function(dropJackText);
        jack_set_info_function(dropJackText);
        for (const int level : {FLUID_PANIC, FLUID_ERR, FLUID_WARN, FLUID_INFO, FLUID_DBG})
            fluid_set_log_function(level, dropFluidText, nullptr);
    });
}
