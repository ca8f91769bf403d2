#include "platform/linux/linux_midi_out.h"

#include "platform/linux/audio_engine.h"
#include "platform/linux/audio_stream.h"
#include "platform/linux/steady_time.h"

#include <utility>

LinuxMidiOut::LinuxMidiOut(AudioEngine& engine, AudioStream& stream)
    : engine_(engine), stream_(stream) {}

LinuxMidiOut::~LinuxMidiOut() = default;

int LinuxMidiOut::deviceCount() {
    ports_ = listMidiPorts();
    counted_ = true;
    return static_cast<int>(ports_.size());
}

std::optional<QString> LinuxMidiOut::deviceName(int deviceId) {
    if (deviceId == kMidiMapper)
        return QStringLiteral("Sintetizzatore interno");
    if (!counted_)
        deviceCount();
    if (deviceId < 0 || deviceId >= static_cast<int>(ports_.size()))
        return std::nullopt;
    return QString::fromStdString(ports_[static_cast<std::size_t>(deviceId)].name);
}

MidiOpenResult LinuxMidiOut::open(int deviceId) {
    device_.clear();
    std::unique_ptr<MidiPort> port;
    const SoundCode code = deviceId == kMidiMapper ? openSynthesizer() : openPort(deviceId, port);
    if (code != SoundCode::Ok)
        return {toInt(code), 0};
    // Handles are never used twice, so that one kept too long cannot reach another device.
    open_.emplace(++lastHandle_, std::move(port));
    return {0, lastHandle_};
}

SoundCode LinuxMidiOut::openSynthesizer() {
    stream_.revive();
    stream_.retry();
    if (stream_.wait() != AudioStream::Status::Running)
        return SoundCode::NoAudioDevice;
    return stream_.hasSynthesizer() ? SoundCode::Ok : SoundCode::NoSoundfont;
}

SoundCode LinuxMidiOut::openPort(int deviceId, std::unique_ptr<MidiPort>& port) {
    const auto name = deviceName(deviceId);
    if (!name)
        return SoundCode::UnknownDevice;
    device_ = *name;
    SoundCode code = SoundCode::Ok;
    port = MidiPort::open(ports_[static_cast<std::size_t>(deviceId)], code);
    return code;
}

template <typename ToEngine, typename ToPort>
int LinuxMidiOut::route(MidiHandle handle, ToEngine toEngine, ToPort toPort) {
    if (handle == 0)
        return 0;
    const auto found = open_.find(handle);
    if (found == open_.end())
        return toInt(SoundCode::InvalidHandle);
    if (found->second) {
        device_ = found->second->name();
        return toInt(toPort(*found->second));
    }
    stream_.revive();
    const bool taken = stream_.status() != AudioStream::Status::Failed && toEngine();
    return toInt(taken ? SoundCode::Ok : SoundCode::NotResponding);
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

int LinuxMidiOut::close(MidiHandle handle) {
    const auto found = open_.find(handle);
    if (found == open_.end())
        return toInt(SoundCode::InvalidHandle);
    if (!found->second)
        engine_.reset(steadyNow());
    open_.erase(found);
    return 0;
}

QString LinuxMidiOut::errorText(int code) const {
    return soundCodeText(code, device_);
}
