#include "audio/audio_engine.h"

#include "audio/tune.h"
#include "audio/wave.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr double kIdleAfterSeconds = 3.0;
constexpr auto kNever = std::numeric_limits<std::int64_t>::max();
constexpr auto kNotEnded = std::numeric_limits<std::uint64_t>::max();

}  // namespace

AudioEngine::AudioEngine(double rate)
    : rate_(rate), timeline_(rate), mixer_(rate), lastRequest_(kNever) {}

void AudioEngine::setRate(double rate) {
    rate_ = rate;
    timeline_.setRate(rate);
    mixer_.setRate(rate);
}

void AudioEngine::setSynthesizer(std::unique_ptr<Synthesizer> synthesizer) {
    mixer_.setSynthesizer(std::move(synthesizer));
}

bool AudioEngine::message(std::uint32_t packed, std::int64_t now) {
    SoundEvent event;
    event.message = packed;
    return post(event, now);
}

bool AudioEngine::reset(std::int64_t now) {
    SoundEvent event;
    event.kind = SoundEvent::Kind::Reset;
    return post(event, now);
}

bool AudioEngine::plan(std::uint32_t packed, std::int64_t instant) {
    SoundEvent event;
    event.message = packed;
    event.planned = true;
    return post(event, instant);
}

bool AudioEngine::planReset(std::int64_t instant) {
    SoundEvent event;
    event.kind = SoundEvent::Kind::Reset;
    event.planned = true;
    return post(event, instant);
}

void AudioEngine::cancelPlanned(std::int64_t now) {
    SoundEvent event;
    event.kind = SoundEvent::Kind::CancelPlanned;
    post(event, now);
}

bool AudioEngine::startTune(std::shared_ptr<Tune> tune, std::int64_t now) {
    SoundEvent event;
    event.kind = SoundEvent::Kind::StartTune;
    event.tune = tune.get();
    if (!post(event, now))
        return false;
    endKept(Slot::Tune);
    kept_.push_back({Slot::Tune, std::move(tune), kNotEnded});
    return true;
}

bool AudioEngine::stopTune(std::int64_t now) {
    SoundEvent event;
    event.kind = SoundEvent::Kind::StopTune;
    if (!post(event, now))
        return false;
    endKept(Slot::Tune);
    return true;
}

bool AudioEngine::startWave(std::shared_ptr<const Wave> wave, std::int64_t now) {
    SoundEvent event;
    event.kind = SoundEvent::Kind::StartWave;
    event.wave = wave.get();
    if (!post(event, now))
        return false;
    endKept(Slot::Wave);
    kept_.push_back({Slot::Wave, std::move(wave), kNotEnded});
    return true;
}

bool AudioEngine::post(SoundEvent event, std::int64_t now) {
    event.time = now;
    freeEnded();
    const bool taken = timeline_.post(event);
    wake();
    return taken;
}

void AudioEngine::endKept(Slot slot) {
    for (Kept& kept : kept_)
        if (kept.slot == slot && kept.endedBy == kNotEnded)
            kept.endedBy = timeline_.posted();
}

void AudioEngine::freeEnded() {
    // An event counts as given out just before it is applied; the one after it, only afterwards.
    const std::uint64_t applied = timeline_.givenOut();
    kept_.erase(std::remove_if(kept_.begin(), kept_.end(),
                               [applied](const Kept& kept) { return kept.endedBy < applied; }),
                kept_.end());
}

void AudioEngine::render(float* left, float* right, int frames, std::int64_t now) {
    lastRequest_.store(now);
    timeline_.request(now, delivered_, frames);
    for (int done = 0; done < frames;) {
        if (used_ == SoundMixer::kBlock)
            renderBlock();
        const int count = std::min(frames - done, SoundMixer::kBlock - used_);
        std::copy_n(left_.begin() + used_, count, left + done);
        std::copy_n(right_.begin() + used_, count, right + done);
        used_ += count;
        done += count;
    }
    delivered_ += frames;
}

void AudioEngine::renderBlock() {
    while (const auto event = timeline_.next(rendered_, SoundMixer::kBlock))
        mixer_.apply(*event);
    mixer_.render(left_, right_);
    rendered_ += SoundMixer::kBlock;
    used_ = 0;
}

bool AudioEngine::isIdle() const {
    return static_cast<double>(mixer_.silentFrames()) >= kIdleAfterSeconds * rate_ &&
           timeline_.empty();
}

void AudioEngine::waitForPost() {
    const std::uint32_t seen = posts_.load();
    lastRequest_.store(kNever);
    if (timeline_.empty())
        posts_.wait(seen);
    mixer_.resetSilentFrames();
    timeline_.restart();
}

void AudioEngine::wake() {
    posts_.fetch_add(1);
    posts_.notify_one();
}
