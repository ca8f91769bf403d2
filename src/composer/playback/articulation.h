#pragma once

#include "core/letter.h"

#include <QStringView>

#include <cstdint>

/// How an entry is played. Times are whole milliseconds. A further gap of `kGapMs` follows between
/// two entries, so that an entry takes exactly its total.
struct Articulation {
    static constexpr int kGapMs = 30;

    int velocity = letter::rowOf('n').velocity;
    std::int64_t soundingMs = 0;  ///< below 1 for an entry too short to be played
    std::int64_t silenceMs = 0;   ///< after the note, or of the rest; never negative

    /// Takes the values of an entry by its letter. A letter without a row keeps those of
    /// the entry before; a rest changes only the silence. `duration` is in quarter notes, `tempo`
    /// in quarter notes per minute, above 0.
    void articulate(QStringView attribute, double duration, int tempo);
};

/// The time that an entry takes: the integer part of its milliseconds.
std::int64_t totalMs(double duration, int tempo);
