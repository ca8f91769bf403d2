#include "platform/linux/linux_midi_out.h"

#include "audio/audio_engine.h"
#include "audio/steady_time.h"
#include "platform/linux/audio_stream.h"
#include "platform/runtime.h"
#include "platform/user_text.h"

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kServeInterval(20);
/// A sound server that is there opens within this; one that hangs holds up nobody for longer.
constexpr auto kReopenTimeout = 150ms;

}  // namespace

LinuxMidiOut::LinuxMidiOut(AudioEngine& engine, AudioStream& stream, Runtime* runtime)
    : engine_(engine), stream_(stream), runtime_(runtime) {}

LinuxMidiOut::~LinuxMidiOut() = default;

int LinuxMidiOut::deviceCount() {
    ports_ = listMidiPorts();
    counted_ = true;
    return static_cast<int>(ports_.size());
}

std::optional<QString> LinuxMidiOut::deviceName(int deviceId) {
    if (deviceId == kMidiMapper)
        return UserText::tr("Sintetizzatore interno");
    if (!counted_)
        deviceCount();
    if (deviceId < 0 || deviceId >= static_cast<int>(ports_.size()))
        return std::nullopt;
    return QString::fromStdString(ports_[static_cast<std::size_t>(deviceId)].name);
}

MidiOpenResult LinuxMidiOut::open(int deviceId) {
    device_.clear();
    Output output;
    const SoundCode code =
        deviceId == kMidiMapper ? openSynthesizer({}) : openPort(deviceId, output);
    return answer(code, std::move(output));
}

MidiOpenResult LinuxMidiOut::answer(SoundCode code, Output output) {
    if (code != SoundCode::Ok)
        return {toInt(code), 0};
    // Handles are never used twice, so that one kept too long cannot reach another device.
    open_.emplace(++lastHandle_, std::move(output));
    return {0, lastHandle_};
}

MidiOpenResult LinuxMidiOut::reopen(MidiHandle handle) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return {toInt(SoundCode::InvalidHandle), 0};
    SoundCode code = SoundCode::Ok;
    Output output;
    output.address = found->second.address;
    if (found->second.port) {
        device_ = QString::fromStdString(output.address.name);
        output.port = MidiPort::open(output.address, code);
    } else {
        code = openSynthesizer(kReopenTimeout);
    }
    // The synthesizer still waits to play what was sent before its loss was noticed: closing the
    // old handle ends these notes.
    if (code == SoundCode::Ok)
        close(handle);
    return answer(code, std::move(output));
}

SoundCode LinuxMidiOut::openSynthesizer(std::optional<std::chrono::milliseconds> atMost) {
    stream_.revive();
    stream_.retry();
    const bool running =
        atMost ? stream_.wait(*atMost) == AudioStream::Status::Running : waitForStream();
    if (!running)
        return SoundCode::NoAudioDevice;
    if (stream_.hasSynthesizer())
        return SoundCode::Ok;
    return stream_.hasSoundfont() ? SoundCode::SoundfontDamaged : SoundCode::NoSoundfont;
}

/// Whether the stream runs. Before a failure is reported, what the user did in the wait has its
/// effect: that may be the click that is to close the program.
bool LinuxMidiOut::waitForStream() {
    if (!runtime_)
        return stream_.wait() == AudioStream::Status::Running;
    // A sound server that has not answered by now may hang. What waits in the queue is not to wait
    // for it: it may be the user closing the program.
    if (stream_.stillOpening())
        runtime_->yield();
    while (!runtime_->ending() && stream_.stillOpening())
        runtime_->blockUntil(runtime_->now() + kServeInterval);
    const bool running = stream_.status() == AudioStream::Status::Running;
    if (!running)
        runtime_->yield();
    return running;
}

SoundCode LinuxMidiOut::openPort(int deviceId, Output& output) {
    const auto name = deviceName(deviceId);
    if (!name)
        return SoundCode::UnknownDevice;
    device_ = *name;
    SoundCode code = SoundCode::Ok;
    output.address = ports_[static_cast<std::size_t>(deviceId)];
    output.port = MidiPort::open(output.address, code);
    return code;
}

template <typename ToEngine, typename ToPort>
int LinuxMidiOut::route(MidiHandle handle, ToEngine toEngine, ToPort toPort) {
    if (handle == 0)
        return 0;
    const auto found = open_.find(handle);
    if (found == open_.end())
        return toInt(SoundCode::InvalidHandle);
    Output& output = found->second;
    SoundCode code = SoundCode::Ok;
    if (output.port) {
        device_ = output.port->name();
        code = toPort(*output.port);
        output.gone = code == SoundCode::DeviceVanished;
    } else {
        stream_.revive();
        output.gone = output.gone || stream_.status() == AudioStream::Status::Failed;
        if (output.gone || !toEngine())
            code = SoundCode::NotResponding;
    }
    return toInt(code);
}

int LinuxMidiOut::send(MidiHandle handle, std::uint32_t message) {
    const std::int64_t now = steadyNow();
    return route(
        handle, [&] { return engine_.message(message, now); },
        [&](MidiPort& port) { return port.send(message); });
}

int LinuxMidiOut::reset(MidiHandle handle) {
    const std::int64_t now = steadyNow();
    return route(
        handle, [&] { return engine_.reset(now); }, [](MidiPort& port) { return port.reset(); });
}

bool LinuxMidiOut::plan(MidiHandle handle, std::uint32_t message, Instant at) {
    return handle != 0 && route(
                              handle, [&] { return engine_.plan(message, at.count()); },
                              [&](MidiPort& port) { return port.plan(message, at); }) == 0;
}

bool LinuxMidiOut::planReset(MidiHandle handle, Instant at) {
    return handle != 0 && route(
                              handle, [&] { return engine_.planReset(at.count()); },
                              [&](MidiPort& port) { return port.plan(std::nullopt, at); }) == 0;
}

void LinuxMidiOut::cancelPlanned(MidiHandle handle) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return;
    if (found->second.port)
        found->second.port->cancelPlanned();
    else
        engine_.cancelPlanned(steadyNow());
}

Instant LinuxMidiOut::delay(MidiHandle handle) const {
    const auto found = open_.find(handle);
    const bool synthesizer = found != open_.end() && !found->second.port;
    return Instant{synthesizer ? engine_.delay() : 0};
}

int LinuxMidiOut::close(MidiHandle handle) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return toInt(SoundCode::InvalidHandle);
    cancelPlanned(handle);
    if (!found->second.port)
        engine_.reset(steadyNow());
    open_.erase(found);
    return 0;
}

bool LinuxMidiOut::gone(MidiHandle handle) const {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return false;
    const Output& output = found->second;
    return output.gone || (output.port && output.port->gone());
}

QString LinuxMidiOut::errorText(int code) const {
    return soundCodeText(code, device_);
}
