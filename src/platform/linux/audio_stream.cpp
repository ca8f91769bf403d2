#include "platform/linux/audio_stream.h"

#include "audio/audio_engine.h"
#include "audio/dropouts.h"
#include "audio/fluid_synth.h"
#include "audio/steady_time.h"
#include "audio/synthesizer.h"
#include "platform/linux/jack_watch.h"
#include "platform/linux/library_output.h"
#include "platform/linux/pulse_output.h"

#include <fluidsynth.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr int kPeriods = 4;
/// The size of periods after repeated dropouts, in their first size. The buffers are then as long
/// as what is planned is heard later than its instant, less what a late thread takes.
constexpr int kGrowth = 2;
/// How long the end of the program waits until the stream is closed.
constexpr auto kCloseTimeout = std::chrono::seconds(1);
/// The same while the stream is opening: there is nothing to close yet, and the opening may hang.
constexpr auto kCloseTimeoutWhileOpening = std::chrono::milliseconds(200);
constexpr std::int64_t kStalledAfter = 2'000'000'000;

struct Driver {
    FluidSettings settings{nullptr, delete_fluid_settings};
    std::unique_ptr<fluid_audio_driver_t, decltype(&delete_fluid_audio_driver)> driver{
        nullptr, delete_fluid_audio_driver};
    std::unique_ptr<PulseOutput> pulse;  // in place of a driver of the library
    std::shared_ptr<JackWatch> jack;     // for the driver of that name

    bool isOpen() const { return driver || pulse; }

    void close() {
        pulse.reset();
        driver.reset();
        settings.reset();
        jack.reset();
    }

    void abandon() {
        static_cast<void>(driver.release());
        static_cast<void>(settings.release());
        jack.reset();
    }
};

constexpr const char* kPulseAudio = "pulseaudio";

/// Whether the stream's callback may block while nothing sounds. JACK and PipeWire call it from
/// their own real-time threads, which must not.
bool callbackMayBlock(const std::string& driver) {
    return driver == "alsa";
}

/// Whether the stream plays from buffers of the size that is asked for here, and fills them anew
/// without a word when they have run empty. Servers have buffers of their own.
bool hasOwnBuffers(const std::string& driver) {
    return driver == "alsa" || driver == "oss";
}

}  // namespace

/// What the program, the opening thread and the audio thread share. The last owner frees it: a
/// thread that hangs in a sound library keeps it, and the program goes on without that thread.
struct AudioStream::Core {
    Core(std::shared_ptr<AudioEngine> audioEngine, Setup streamSetup)
        : engine(std::move(audioEngine)), setup(std::move(streamSetup)) {}

    void run();
    void prepare(double rate);
    void open();
    void close();
    void reopenAfter(Status expected);
    bool openDriver(const std::string& name);
    bool openPulse();
    bool waitForWork();
    void watchBuffers(int frames, std::int64_t now);
    static int fill(void* self, int frames, int effects, float* effectSides[], int sides,
                    float* out[]);

    const std::shared_ptr<AudioEngine> engine;
    const Setup setup;
    Driver output;          // the opening thread's
    bool mayBlock = false;  // these two are written before the driver starts
    bool ownBuffers = false;
    BufferLevel level;  // the audio thread's
    DropoutCount dropouts;
    std::atomic<bool> needsLargerBuffers = false;
    std::atomic<bool> hasLargerBuffers = false;
    std::atomic<bool> closing = false;

    std::mutex mutex;
    std::condition_variable changed;
    Status status = Status::Opening;
    std::chrono::steady_clock::time_point attemptStarted = std::chrono::steady_clock::now();
    bool reopen = false;
    bool quit = false;
    bool begun = false;
    bool ended = true;  // of the opening thread
};

int AudioStream::Core::fill(void* self, int frames, int, float**, int sides, float* out[]) {
    auto& core = *static_cast<Core*>(self);
    if (sides < 2)
        return FLUID_FAILED;
    AudioEngine& engine = *core.engine;
    if (core.mayBlock && core.waitForWork())
        core.level.restart();
    const std::int64_t now = steadyNow();
    if (core.ownBuffers)
        core.watchBuffers(frames, now);
    engine.render(out[0], out[1], frames, now);
    for (int side = 2; side < sides; ++side)
        std::fill_n(out[side], frames, 0.0F);
    return FLUID_OK;
}

/// Audio thread: blocks while nothing sounds. Whether it did.
bool AudioStream::Core::waitForWork() {
    if (closing.load() || !engine->isIdle())
        return false;
    engine->waitForPost();
    return true;
}

/// Audio thread, which cannot open the stream anew: the next message sees to that.
void AudioStream::Core::watchBuffers(int frames, std::int64_t now) {
    if (!level.ranEmpty(now, frames, kPeriods * frames, engine->rate()))
        return;
    engine->streamInterrupted();
    if (dropouts.callsForMore(now))
        needsLargerBuffers = true;
}

void AudioStream::Core::run() {
    prepare(engine->rate());
    std::unique_lock lock(mutex);
    attemptStarted = std::chrono::steady_clock::now();
    while (!quit) {
        reopen = false;
        lock.unlock();
        open();
        lock.lock();
        status = output.isOpen() ? Status::Running : Status::Failed;
        changed.notify_all();
        changed.wait(lock, [this] { return quit || reopen; });
    }
    lock.unlock();
    close();
    lock.lock();
    ended = true;
    changed.notify_all();
}

void AudioStream::Core::close() {
    if (!output.isOpen())
        return;
    // The JACK library crashes on closing a client whose server is gone.
    if (output.jack && output.jack->serverGone()) {
        output.abandon();
        return;
    }
    // The audio thread may be blocked in its callback, where closing would wait for it for ever.
    closing = true;
    engine->wake();
    output.close();
    closing = false;
}

void AudioStream::Core::open() {
    close();
    // Of whatever opens now: a server has buffers of its own.
    hasLargerBuffers = needsLargerBuffers.load();
    for (const std::string& name : setup.drivers)
        if (openDriver(name))
            return;
}

void AudioStream::Core::prepare(double rate) {
    engine->setRate(rate);
    engine->setSynthesizer(Synthesizer::load(setup.soundfont, rate));
}

bool AudioStream::Core::openDriver(const std::string& name) {
    if (name == kPulseAudio)
        return openPulse();
    // JACK alone insists on a rate of its own.
    output.jack = name == "jack" ? JackWatch::ofRunningServer() : nullptr;
    if (output.jack && output.jack->sampleRate() != engine->rate())
        prepare(output.jack->sampleRate());
    output.settings = makeFluidSettings();
    fluid_settings_t* settings = output.settings.get();
    if (!settings || fluid_settings_setstr(settings, "audio.driver", name.c_str()) != FLUID_OK)
        return false;
    fluid_settings_setnum(settings, "synth.sample-rate", engine->rate());
    fluid_settings_setint(settings, "audio.period-size",
                          setup.periodFrames * (hasLargerBuffers ? kGrowth : 1));
    fluid_settings_setint(settings, "audio.periods", kPeriods);
    fluid_settings_setint(settings, "audio.jack.autoconnect", 1);
    fluid_settings_setstr(settings, "audio.jack.id", "Cantavista");
    mayBlock = callbackMayBlock(name);
    ownBuffers = hasOwnBuffers(name);
    engine->streamOpens();
    level.restart();
    dropouts.streamBegan(steadyNow());
    output.driver.reset(new_fluid_audio_driver2(settings, &Core::fill, this));
    return output.driver != nullptr;
}

bool AudioStream::Core::openPulse() {
    engine->streamOpens();
    PulseOutput::Source source;
    source.render = [this](float* left, float* right, int frames) {
        engine->render(left, right, frames, steadyNow());
    };
    source.latency = [this](std::int64_t latency) { engine->streamHeard(steadyNow() + latency); };
    source.began = [this] { engine->streamBegan(steadyNow()); };
    source.interrupted = [this] { engine->streamInterrupted(); };
    source.resized = [this] { engine->streamResized(); };
    source.waitForWork = [this] { return waitForWork(); };
    source.hasPlanned = [this] { return engine->hasPlanned(); };
    output.pulse = PulseOutput::open(std::move(source), {static_cast<int>(engine->rate()),
                                                         setup.periodFrames, setup.periodFrames});
    return output.pulse != nullptr;
}

AudioStream::AudioStream(std::shared_ptr<AudioEngine> engine, Setup setup)
    : core_(std::make_shared<Core>(std::move(engine), std::move(setup))) {}

void AudioStream::begin() const {
    {
        const std::lock_guard lock(core_->mutex);
        if (std::exchange(core_->begun, true))
            return;
        core_->ended = false;
        core_->attemptStarted = std::chrono::steady_clock::now();
    }
    suppressLibraryOutput();
    std::thread([core = core_] { core->run(); }).detach();
}

AudioStream::~AudioStream() {
    std::unique_lock lock(core_->mutex);
    core_->quit = true;
    core_->changed.notify_all();
    const bool opening = core_->status == Status::Opening;
    core_->changed.wait_for(lock, opening ? kCloseTimeoutWhileOpening : kCloseTimeout,
                            [this] { return core_->ended; });
}

AudioStream::Status AudioStream::status() const {
    begin();
    const std::lock_guard lock(core_->mutex);
    const bool overdue =
        core_->status == Status::Opening &&
        std::chrono::steady_clock::now() >= core_->attemptStarted + core_->setup.openTimeout;
    return overdue ? Status::Failed : core_->status;
}

/// Has the driver opened anew, unless the stream is in another state than its caller believes.
void AudioStream::Core::reopenAfter(Status expected) {
    const std::lock_guard lock(mutex);
    if (status != expected)
        return;
    status = Status::Opening;
    attemptStarted = std::chrono::steady_clock::now();
    reopen = true;
    changed.notify_all();
}

bool AudioStream::stillOpening() const {
    begin();
    const std::lock_guard lock(core_->mutex);
    return core_->status == Status::Opening &&
           std::chrono::steady_clock::now() < core_->attemptStarted + core_->setup.openTimeout;
}

AudioStream::Status AudioStream::wait(std::chrono::milliseconds most) const {
    begin();
    std::unique_lock lock(core_->mutex);
    const auto deadline = core_->attemptStarted + std::min(most, core_->setup.openTimeout);
    core_->changed.wait_until(lock, deadline, [this] { return core_->status != Status::Opening; });
    return core_->status == Status::Running ? Status::Running : Status::Failed;
}

void AudioStream::retry() {
    begin();
    core_->reopenAfter(Status::Failed);
}

void AudioStream::revive() {
    const std::int64_t last = core_->engine->lastRequest();
    const bool starved = core_->needsLargerBuffers && !core_->hasLargerBuffers;
    if (starved || steadyNow() - kStalledAfter >= last)
        core_->reopenAfter(Status::Running);
}

bool AudioStream::hasSynthesizer() const {
    const std::lock_guard lock(core_->mutex);
    return core_->status == Status::Running && core_->engine->hasSynthesizer();
}

bool AudioStream::hasSoundfont() const {
    return soundfontExists(core_->setup.soundfont);
}

std::vector<std::string> AudioStream::usualDrivers() {
    return {"pulseaudio", "alsa", "jack", "pipewire", "oss"};
}
