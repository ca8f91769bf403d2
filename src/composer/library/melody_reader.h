#pragma once

#include "composer/melody/melody_editor.h"
#include "platform/folders.h"

#include <QString>

#include <optional>

/// What came of reading a melody's file: the melody, or the error that the disk gave, or neither if
/// the bytes are no melody.
struct MelodyReading {
    FileError error;
    std::optional<MelodyFile> file;
    QByteArray bytes = {};
};

MelodyReading readMelody(const Folders& folders, const QString& path);
