#pragma once

#include "platform/media_commands.h"

#include <string>

class Folders;

/// The system's own player of MIDI files and of short wave files.
class WindowsMedia : public MediaCommands {
public:
    explicit WindowsMedia(const Folders& folders) : folders_(folders) {}

    QString errorText(int code) const override;
    bool playSound(const QString& path, std::uint32_t flags) override;

protected:
    int open(const QString& path, const QString& alias) override;
    int play(const QString& alias) override;
    int close(const QString& alias) override;
    int unknownCommand() const override;

private:
    std::wstring systemPath(const QString& path) const;

    const Folders& folders_;
};
