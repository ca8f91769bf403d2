#pragma once

#include "composer/exchange/imported_score.h"

#include <QByteArray>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

/// What a standard MIDI file plays, before it is a melody. Times are counted in the file's ticks.
namespace midi_recording {

/// No larger file is read.
constexpr qint64 kLargestFile = qint64{8} * 1024 * 1024;

struct Note {
    std::int64_t on = 0;
    std::int64_t off = 0;
    int note = 0;      ///< 0..127
    int velocity = 0;  ///< 1..127
    int channel = 0;   ///< 0..15
};

/// A metre from a tick on, with which a bar begins.
struct Metre {
    std::int64_t tick = 0;
    std::int64_t barTicks = 0;  ///< above 0
    std::int64_t bar = 1;       ///< the number of its first bar
};

struct Recording {
    int ticksPerQuarter = 0;
    std::vector<Note> notes;     ///< of all tracks, by their beginning
    std::int64_t end = 0;        ///< of the longest track
    int usPerQuarter = 500'000;  ///< the first tempo; what the format takes without one
    std::optional<int> program;  ///< General MIDI program of the first note
    std::vector<Metre> metres;   ///< by their ticks
    std::vector<imported::LeftOut> leftOut;
    QString fault;  ///< why it cannot be read

    /// The bar of a tick, from 1.
    std::int64_t barOf(std::int64_t tick) const;
};

/// Reads a file of format 0 or 1 whose ticks divide quarter notes. A file of unknown origin costs
/// no more time and memory than one of its size that means well.
Recording read(const QByteArray& bytes);

}  // namespace midi_recording
