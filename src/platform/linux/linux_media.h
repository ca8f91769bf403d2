#pragma once

#include "platform/linux/sound_code.h"
#include "platform/media.h"

#include <QByteArray>

#include <optional>

class AudioEngine;
class AudioStream;
class Folders;
struct MediaCommand;

/// The tune and the short sounds, on the program's one audio stream. Without an audio device the
/// commands succeed in silence: that there is none is reported where the MIDI output is opened.
class LinuxMedia : public Media {
public:
    LinuxMedia(AudioEngine& engine, AudioStream& stream, const Folders& folders);
    ~LinuxMedia() override;

    int command(const QString& text) override;
    QString errorText(int code) const override;
    bool playSound(const QString& path, std::uint32_t flags) override;

private:
    struct OpenTune {
        QString alias;
        QByteArray file;
    };

    SoundCode open(const MediaCommand& command);
    SoundCode play();
    SoundCode close();
    bool audible() const;

    AudioEngine& engine_;
    AudioStream& stream_;
    const Folders& folders_;
    std::optional<OpenTune> open_;
};
