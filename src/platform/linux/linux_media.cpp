#include "platform/linux/linux_media.h"

#include "audio/audio_engine.h"
#include "audio/steady_time.h"
#include "audio/tune.h"
#include "audio/wave.h"
#include "platform/folders.h"
#include "platform/linux/audio_stream.h"

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

int LinuxMedia::open(const QString& path, const QString& alias) {
    // Whatever the file is, something will sound soon.
    stream_.begin();
    if (open_)
        return toInt(SoundCode::AliasInUse);
    const auto bytes = readFile(folders_.nativePath(path));
    if (!bytes)
        return toInt(SoundCode::FileNotFound);
    if (!Tune::start(*bytes))
        return toInt(SoundCode::NotMidiFile);
    open_ = {alias, *bytes};
    return toInt(SoundCode::Ok);
}

int LinuxMedia::play(const QString& alias) {
    if (!isOpen(alias))
        return toInt(SoundCode::AliasNotOpen);
    const bool taken = !audible() || engine_.startTune(Tune::start(open_->file), steadyNow());
    return toInt(taken ? SoundCode::Ok : SoundCode::NotResponding);
}

int LinuxMedia::close(const QString& alias) {
    if (!isOpen(alias))
        return toInt(SoundCode::AliasNotOpen);
    if (audible() && !engine_.stopTune(steadyNow()))
        return toInt(SoundCode::NotResponding);
    open_.reset();
    return toInt(SoundCode::Ok);
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
