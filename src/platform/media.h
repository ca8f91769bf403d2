#pragma once

#include <QString>

#include <cstdint>

/// Flags of `Media::playSound`.
constexpr std::uint32_t kSoundAsync = 0x00001;      ///< return at once
constexpr std::uint32_t kSoundNoDefault = 0x00002;  ///< silence, not the default sound, if missing
constexpr std::uint32_t kSoundFileName = 0x20000;   ///< the argument is the path of a wave file

/// Recorded sound: one MIDI file at a time under text commands, and short wave files.
class Media {
public:
    virtual ~Media() = default;

    /// Carries out one command: "OPEN <path> ALIAS <alias> ", "PLAY <alias>" or "CLOSE <alias>".
    /// Playing returns at once. Answers 0, or a code for `errorText`.
    virtual int command(const QString& text) = 0;

    /// The system's text for a code, at most 254 characters.
    virtual QString errorText(int code) const = 0;

    /// Plays a wave file. A missing or unreadable one gives the default sound, or silence with
    /// `kSoundNoDefault`. Answers whether something was started.
    virtual bool playSound(const QString& path, std::uint32_t flags) = 0;
};
