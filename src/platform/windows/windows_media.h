#pragma once

#include "platform/media.h"

class Folders;

/// The system's own player of MIDI files and of short wave files.
class WindowsMedia : public Media {
public:
    explicit WindowsMedia(const Folders& folders) : folders_(folders) {}

    int command(const QString& text) override;
    QString errorText(int code) const override;
    bool playSound(const QString& path, std::uint32_t flags) override;

private:
    const Folders& folders_;
};
