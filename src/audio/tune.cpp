#include "audio/tune.h"

#include "audio/fluid_synth.h"

#include <utility>

namespace {

// The player looks at its time once a block, which at this rate lasts a millisecond.
constexpr int kBlock = 64;
constexpr double kRate = 64'000;
constexpr double kBlockSeconds = kBlock / kRate;
constexpr std::size_t kUsualMessages = 256;

/// 0 for what is no channel message or does not concern the notes.
std::uint32_t packed(fluid_midi_event_t& event) {
    const auto pack = [&event](int data1, int data2) {
        return static_cast<std::uint32_t>(fluid_midi_event_get_type(&event) |
                                          fluid_midi_event_get_channel(&event) | data1 << 8 |
                                          data2 << 16);
    };
    switch (fluid_midi_event_get_type(&event)) {
        case 0x80:
        case 0x90:
            return pack(fluid_midi_event_get_key(&event), fluid_midi_event_get_velocity(&event));
        case 0xB0:
            return pack(fluid_midi_event_get_control(&event), fluid_midi_event_get_value(&event));
        case 0xC0:
            return pack(fluid_midi_event_get_program(&event), 0);
        case 0xE0: {
            const int bend = fluid_midi_event_get_pitch(&event);
            return pack(bend & 0x7F, bend >> 7);
        }
        default:
            return 0;
    }
}

int collect(void* messages, fluid_midi_event_t* event) {
    if (const std::uint32_t message = packed(*event))
        static_cast<std::vector<std::uint32_t>*>(messages)->push_back(message);
    return FLUID_OK;
}

}  // namespace

struct Tune::Player {
    FluidSynth counter;
    std::unique_ptr<fluid_player_t, decltype(&delete_fluid_player)> player{nullptr,
                                                                           delete_fluid_player};
    std::vector<std::uint32_t> due;
    std::vector<std::uint32_t> given;
    double seconds = 0;

    bool start(QByteArrayView file) {
        fluid_settings_t* settings = counter.settings.get();
        fluid_settings_setnum(settings, "synth.sample-rate", kRate);
        fluid_settings_setint(settings, "synth.polyphony", 1);
        fluid_settings_setint(settings, "synth.reverb.active", 0);
        fluid_settings_setint(settings, "synth.chorus.active", 0);
        fluid_settings_setint(settings, "synth.lock-memory", 0);
        fluid_settings_setint(settings, "synth.threadsafe-api", 0);
        if (!counter.make())
            return false;
        due.reserve(kUsualMessages);
        given.reserve(kUsualMessages);
        player.reset(new_fluid_player(counter.synth.get()));
        fluid_player_set_playback_callback(player.get(), collect, &due);
        if (fluid_player_add_mem(player.get(), file.data(),
                                 static_cast<std::size_t>(file.size())) != FLUID_OK)
            return false;
        fluid_player_play(player.get());
        // The file is read in the first block, and what is due at the beginning given out.
        countBlock();
        return playing() || !due.empty();
    }

    bool playing() const { return fluid_player_get_status(player.get()) == FLUID_PLAYER_PLAYING; }

    void countBlock() {
        float left[kBlock];
        float right[kBlock];
        fluid_synth_write_float(counter.synth.get(), kBlock, left, 0, 1, right, 0, 1);
        seconds += kBlockSeconds;
    }
};

std::unique_ptr<Tune> Tune::start(QByteArrayView file) {
    auto player = std::make_unique<Player>();
    if (file.isEmpty() || !player->start(file))
        return nullptr;
    return std::unique_ptr<Tune>(new Tune(std::move(player)));
}

Tune::Tune(std::unique_ptr<Player> player) : player_(std::move(player)) {}

Tune::~Tune() = default;

const std::vector<std::uint32_t>& Tune::messagesUntil(double seconds) {
    while (player_->playing() && player_->seconds < seconds)
        player_->countBlock();
    std::swap(player_->due, player_->given);
    player_->due.clear();
    return player_->given;
}

bool Tune::over() const {
    return !player_->playing() && player_->due.empty();
}
