#pragma once

#include "metronome/pulse_pattern.h"

#include <QString>

#include <cstdint>

/// What the metronome is set to, for the run of the program. It outlives the metronome's frame
/// being hidden and is shared with the window for custom sequences.
struct MetronomeState {
    static constexpr std::int16_t kFullVelocity = 127;

    bool MetroRunning = false;
    QString MetroPattern = QStringLiteral("ab");   ///< 1 to 20 letters
    QString MetroTimeSig = QStringLiteral("2/4");  ///< shown from the next start on

    /// Percussion notes of the pulse kinds, and their positions in the lists of sounds.
    std::int16_t MetroNoteA = 76;
    std::int16_t MetroNoteB = 85;
    std::int16_t MetroNoteC = 33;
    std::uint8_t MetroSoundIndexA = 8;
    std::uint8_t MetroSoundIndexB = 9;
    std::uint8_t MetroSoundIndexC = 1;

    std::int16_t MetroVolume = kFullVelocity;  ///< velocity of a click, from 0
    std::int16_t MetroMultiplier = 1;          ///< 1 or 2
    double MetroPeriod = 1.0;                  ///< seconds from pulse to pulse

    /// Colour and note of the current pulse; 0 until the first one.
    pulse_pattern::Colour MetroPulseColour = 0;
    std::int16_t MetroPulseNote = 0;

    std::int16_t noteOf(pulse_pattern::Kind kind) const;

    /// Makes a letter of a pattern the current pulse. A letter that names no kind repeats the
    /// pulse before it.
    void takePulse(QChar letter);
};
