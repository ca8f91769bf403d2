#pragma once

#include "platform/linux/sound_code.h"
#include "platform/media_commands.h"

#include <QByteArray>

#include <optional>

class AudioEngine;
class AudioStream;
class Folders;

/// The tune and the short sounds, on the program's one audio stream. Without an audio device the
/// commands succeed in silence: that there is none is reported where the MIDI output is opened.
class LinuxMedia : public MediaCommands {
public:
    LinuxMedia(AudioEngine& engine, AudioStream& stream, const Folders& folders);
    ~LinuxMedia() override;

    QString errorText(int code) const override;
    bool playSound(const QString& path, std::uint32_t flags) override;

protected:
    int open(const QString& path, const QString& alias) override;
    int play(const QString& alias) override;
    int close(const QString& alias) override;
    int unknownCommand() const override { return toInt(SoundCode::UnknownCommand); }

private:
    struct OpenTune {
        QString alias;
        QByteArray file;
    };

    bool isOpen(const QString& alias) const { return open_ && open_->alias == alias; }
    bool audible() const;

    AudioEngine& engine_;
    AudioStream& stream_;
    const Folders& folders_;
    std::optional<OpenTune> open_;
};
