#include "platform/linux/linux_media.h"

#include "audio/audio_engine.h"
#include "audio/steady_time.h"
#include "audio/tune.h"
#include "audio/wave.h"
#include "platform/folders.h"
#include "platform/linux/audio_stream.h"
#include "platform/linux/media_command.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

constexpr qint64 kLargestFile = 32 << 20;

std::optional<QByteArray> readFile(const QString& path) {
    QFile file(path);
    // A pipe or a device could block for ever.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(kLargestFile);
}

/// An answer sound is short: what is much longer counts as missing, unread.
std::shared_ptr<const Wave> waveFromFile(const QString& path, double rate) {
    const auto wave = readWave(path);
    return wave ? std::make_shared<const Wave>(resampled(*wave, rate)) : nullptr;
}

}  // namespace

LinuxMedia::LinuxMedia(AudioEngine& engine, AudioStream& stream, const Folders& folders)
    : engine_(engine), stream_(stream), folders_(folders) {}

LinuxMedia::~LinuxMedia() = default;

int LinuxMedia::command(const QString& text) {
    const auto parsed = MediaCommand::parse(text);
    if (!parsed)
        return toInt(SoundCode::UnknownCommand);
    if (parsed->verb == MediaCommand::Verb::Open)
        return toInt(open(*parsed));
    if (!open_ || open_->alias.compare(parsed->alias, Qt::CaseInsensitive) != 0)
        return toInt(SoundCode::AliasNotOpen);
    return toInt(parsed->verb == MediaCommand::Verb::Play ? play() : close());
}

SoundCode LinuxMedia::open(const MediaCommand& command) {
    if (open_)
        return SoundCode::AliasInUse;
    const auto bytes = readFile(folders_.nativePath(command.path));
    if (!bytes)
        return SoundCode::FileNotFound;
    if (!Tune::start(*bytes))
        return SoundCode::NotMidiFile;
    open_ = {command.alias, *bytes};
    return SoundCode::Ok;
}

SoundCode LinuxMedia::play() {
    if (audible() && !engine_.startTune(Tune::start(open_->file), steadyNow()))
        return SoundCode::NotResponding;
    return SoundCode::Ok;
}

SoundCode LinuxMedia::close() {
    if (audible() && !engine_.stopTune(steadyNow()))
        return SoundCode::NotResponding;
    open_.reset();
    return SoundCode::Ok;
}

bool LinuxMedia::audible() const {
    stream_.revive();
    if (stream_.status() != AudioStream::Status::Failed)
        return true;
    stream_.retry();  // for the next sound
    return false;
}

bool LinuxMedia::playSound(const QString& path, std::uint32_t flags) {
    if (!audible())
        return false;
    auto wave = waveFromFile(folders_.nativePath(path), engine_.rate());
    if (!wave && (flags & kSoundNoDefault) == 0)
        wave = std::make_shared<const Wave>(defaultSound(engine_.rate()));
    return wave && engine_.startWave(std::move(wave), steadyNow());
}

QString LinuxMedia::errorText(int code) const {
    return soundCodeText(code);
}
