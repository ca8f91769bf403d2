#pragma once

#include <QString>

/// What is said of the metronome: its start and stop and what the user changes, never a pulse.
namespace metronome_speech {

QString started(int tempo, const QString& timeSig);
QString stopped();
QString waits();   ///< for the automatic drill, until that is stopped
QString silent();  ///< for want of an output
QString tempo(int beatsPerMinute);
QString timeSignature(const QString& timeSig);

/// The user's own sequence: what is stored when its window closes, a character that it refuses, and
/// one too many for its box.
QString stored(const QString& pattern, const QString& timeSig);
QString refusedLetter();
QString full(int longest);

}  // namespace metronome_speech
