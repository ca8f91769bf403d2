#pragma once

#include <QString>

/// What can go wrong with sound. The values are the codes that the seam hands out; 0 is success.
enum class SoundCode : int {
    Ok = 0,
    NoAudioDevice = 1,
    NoSoundfont = 2,
    UnknownDevice = 3,
    DeviceBusy = 4,
    DeviceVanished = 5,
    InvalidHandle = 6,
    NotResponding = 7,
    SoundfontDamaged = 8,
    UnknownCommand = 20,
    FileNotFound = 21,
    NotMidiFile = 22,
    AliasInUse = 23,
    AliasNotOpen = 24,
};

constexpr int toInt(SoundCode code) {
    return static_cast<int>(code);
}

/// The text shown to the user for a code; any number has one, of at most 127 characters.
QString soundCodeText(int code, const QString& device = {});
