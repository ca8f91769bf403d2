#pragma once

#include <QByteArray>
#include <QString>

struct MelodyScore;

/// The standard MIDI file, format 0: one track with every message.
namespace midi_file {

/// A tick is exactly a millisecond, whatever the tempo; a quarter note has as many of them as come
/// closest to the tempo, in quarter notes per minute, above 0. `name` becomes the track's.
QByteArray write(const MelodyScore& score, int tempo, const QString& name);

}  // namespace midi_file
