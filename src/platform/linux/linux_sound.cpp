#include "platform/linux/linux_sound.h"

#include "audio/audio_engine.h"
#include "platform/linux/audio_stream.h"
#include "platform/linux/library_output.h"
#include "platform/linux/linux_media.h"
#include "platform/linux/linux_midi_out.h"
#include "platform/linux/prompt_thread.h"
#include "platform/linux/soundfont.h"
#include "platform/linux/thread_priority.h"
#include "platform/user_text.h"

namespace {

constexpr double kFramesPerSecond = 44100;

AudioStream::Setup usualSetup() {
    AudioStream::Setup setup;
    setup.soundfont = findSoundfont();
    setup.drivers = AudioStream::usualDrivers();
    return setup;
}

}  // namespace

struct LinuxSound::Parts {
    Parts(const Folders& folders, Runtime* runtime)
        : engine(std::make_shared<AudioEngine>(kFramesPerSecond)),
          stream(engine, usualSetup()),
          midiOut(*engine, stream, runtime),
          media(*engine, stream, folders) {}

    std::shared_ptr<AudioEngine> engine;
    AudioStream stream;
    LinuxMidiOut midiOut;
    LinuxMedia media;
};

LinuxSound::LinuxSound(const Folders& folders, Runtime* runtime)
    : folders_(folders), runtime_(runtime), waveRenderer_(findSoundfont), midiIn_(runtime) {
    suppressLibraryOutput();
}

LinuxSound::~LinuxSound() = default;

LinuxSound::Parts& LinuxSound::parts() {
    if (parts_)
        return *parts_;
    // What this thread sends when a wait is over is to sound then.
    wakePromptly();
    parts_ = std::make_unique<Parts>(folders_, runtime_);
    return *parts_;
}

MidiOut& LinuxSound::midiOut() {
    return parts().midiOut;
}

Media& LinuxSound::media() {
    return parts().media;
}

QString LinuxSound::renderingPriority() const {
    using thread_priority::Grant;
    switch (thread_priority::probe()) {
        case Grant::RealTimeByLimits:
            return UserText::tr("tempo reale, concesso dai limiti dell'utente");
        case Grant::RealTimeByRtkit:
            return UserText::tr("tempo reale, concesso da rtkit");
        case Grant::ShortSlice:
            return UserText::tr("normale con attese brevi, tempo reale non concesso");
        case Grant::None:
            break;
    }
    return UserText::tr("normale, tempo reale non concesso");
}

std::unique_ptr<Sound> openSound(const Folders& folders, Runtime* runtime) {
    return std::make_unique<LinuxSound>(folders, runtime);
}
