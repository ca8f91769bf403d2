#include "platform/linux/library_output.h"

#include <alsa/asoundlib.h>
#include <cstdlib>
#include <jack/jack.h>
#include <mutex>

namespace {

void dropAlsaError(const char*, int, const char*, int, const char*, ...) {}
void dropJackText(const char*) {}

}  // namespace

void suppressLibraryOutput() {
    static std::once_flag once;
    std::call_once(once, [] {
        constexpr int kKeepIfSet = 0;
        setenv("JACK_NO_START_SERVER", "1", kKeepIfSet);
        setenv("PULSE_PROP_OVERRIDE", "application.name='Cantavista' media.name='Cantavista'",
               kKeepIfSet);
        snd_lib_error_set_handler(dropAlsaError);
        jack_set_error_function(dropJackText);
        jack_set_info_function(dropJackText);
    });
}
