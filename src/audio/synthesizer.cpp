#include "audio/synthesizer.h"

#include "audio/fluid_synth.h"

#include <array>
#include <filesystem>
#include <glib.h>
#include <utility>

namespace {

constexpr int kChannels = 16;
constexpr int kDrumChannel = 9;
constexpr int kPolyphony = 128;
constexpr double kGain = 1.0;

enum Controller {
    kVolume = 7,
    kPan = 10,
    kExpression = 11,
    kReverbSend = 91,
    kChorusSend = 93,
    kResetControllers = 121,
};

/// FluidSynth reads soundfonts with GLib, which complains of a damaged one on the terminal.
class SuppressGlibOutput {
public:
    SuppressGlibOutput() : previous_(g_log_set_default_handler(drop, nullptr)) {}
    ~SuppressGlibOutput() { g_log_set_default_handler(previous_, nullptr); }
    SuppressGlibOutput(const SuppressGlibOutput&) = delete;
    SuppressGlibOutput& operator=(const SuppressGlibOutput&) = delete;

private:
    static void drop(const char*, GLogLevelFlags, const char*, void*) {}

    GLogFunc previous_;
};

int firstChannel(Synthesizer::Part part) {
    return part == Synthesizer::Part::Output ? 0 : kChannels;
}

void configure(fluid_settings_t* settings, double rate) {
    fluid_settings_setnum(settings, "synth.sample-rate", rate);
    fluid_settings_setnum(settings, "synth.gain", kGain);
    fluid_settings_setint(settings, "synth.midi-channels", 2 * kChannels);
    fluid_settings_setint(settings, "synth.polyphony", kPolyphony);
    // No message sent here ever asks for chorus, which would cost time in every block.
    fluid_settings_setint(settings, "synth.chorus.active", 0);
    fluid_settings_setint(settings, "synth.lock-memory", 0);
    // One thread at a time uses it, and that must not wait for a lock.
    fluid_settings_setint(settings, "synth.threadsafe-api", 0);
}

}  // namespace

struct Synthesizer::Engine : FluidSynth {};

std::unique_ptr<Synthesizer> Synthesizer::load(const std::string& soundfont, double rate) {
    if (soundfont.empty() || !fluid_is_soundfont(soundfont.c_str()))
        return nullptr;
    auto engine = std::make_unique<Engine>();
    configure(engine->settings.get(), rate);
    if (!engine->make())
        return nullptr;
    fluid_synth_t* synth = engine->synth.get();
    const SuppressGlibOutput suppressed;
    if (fluid_synth_sfload(synth, soundfont.c_str(), 1) == FLUID_FAILED)
        return nullptr;
    fluid_synth_set_channel_type(synth, kChannels + kDrumChannel, CHANNEL_TYPE_DRUM);
    fluid_synth_program_change(synth, kChannels + kDrumChannel, 0);
    return std::unique_ptr<Synthesizer>(new Synthesizer(std::move(engine)));
}

Synthesizer::Synthesizer(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

Synthesizer::~Synthesizer() = default;

void Synthesizer::message(Part part, std::uint32_t packed) {
    fluid_synth_t* synth = engine_->synth.get();
    const int channel = firstChannel(part) + static_cast<int>(packed & 0x0Fu);
    const int data1 = static_cast<int>(packed >> 8 & 0x7Fu);
    const int data2 = static_cast<int>(packed >> 16 & 0x7Fu);
    switch (packed & 0xF0u) {
        case 0x80:
            fluid_synth_noteoff(synth, channel, data1);
            break;
        case 0x90:
            if (data2 == 0)
                fluid_synth_noteoff(synth, channel, data1);
            else
                fluid_synth_noteon(synth, channel, data1, data2);
            break;
        case 0xC0:
            fluid_synth_program_change(synth, channel, data1);
            break;
        case 0xB0:
            if (part == Part::Tune && data1 != kReverbSend)
                fluid_synth_cc(synth, channel, data1, data2);
            break;
        case 0xE0:
            if (part == Part::Tune)
                fluid_synth_pitch_bend(synth, channel, data2 << 7 | data1);
            break;
        default:
            break;
    }
}

void Synthesizer::silence(Part part) {
    const int first = firstChannel(part);
    for (int channel = first; channel < first + kChannels; ++channel) {
        // A struck percussion sound rings out, even if it was struck only just now.
        if (channel == kDrumChannel)
            fluid_synth_all_notes_off(engine_->synth.get(), channel);
        else
            fluid_synth_all_sounds_off(engine_->synth.get(), channel);
    }
}

void Synthesizer::restore(Part part) {
    constexpr std::array<std::pair<int, int>, 6> kDefaults{{{kResetControllers, 0},
                                                            {kVolume, 100},
                                                            {kPan, 64},
                                                            {kExpression, 127},
                                                            {kReverbSend, 0},
                                                            {kChorusSend, 0}}};
    fluid_synth_t* synth = engine_->synth.get();
    const int first = firstChannel(part);
    for (int channel = first; channel < first + kChannels; ++channel) {
        for (const auto& [controller, value] : kDefaults)
            fluid_synth_cc(synth, channel, controller, value);
        // Instruments have reverberation of their own, which would go on after a tune is stopped.
        constexpr float kNoReverb = -1000;
        fluid_synth_set_gen(synth, channel, GEN_REVERBSEND, kNoReverb);
        fluid_synth_pitch_bend(synth, channel, 0x2000);
        fluid_synth_program_change(synth, channel, 0);
    }
}

void Synthesizer::render(float* left, float* right) {
    fluid_synth_write_float(engine_->synth.get(), kBlockFrames, left, 0, 1, right, 0, 1);
}

bool Synthesizer::anyVoice() const {
    return fluid_synth_get_active_voice_count(engine_->synth.get()) > 0;
}

void Synthesizer::takePrograms(const Synthesizer& other) {
    for (int channel = 0; channel < 2 * kChannels; ++channel) {
        int soundfont = 0;
        int bank = 0;
        int program = 0;
        fluid_synth_get_program(other.engine_->synth.get(), channel, &soundfont, &bank, &program);
        fluid_synth_program_change(engine_->synth.get(), channel, program);
    }
}

bool soundfontExists(const std::string& soundfont) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(soundfont, ignored);
}
