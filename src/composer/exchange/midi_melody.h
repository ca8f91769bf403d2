#pragma once

#include "composer/exchange/midi_recording.h"
#include "composer/melody/melody.h"

#include <QChar>

#include <vector>

namespace midi_recording {

/// A recording as one line of entries.
struct Line {
    std::vector<MelodyEntry> entries;
    double tempo = 0;                        ///< quarter notes per minute
    std::vector<imported::LeftOut> leftOut;  ///< beside what the recording lacks already
    QStringList faults;                      ///< why there are no entries, bar by bar
};

/// The entries of the notes, which must begin one after the other on the grid of 64th notes and
/// their triplets. Where the ticks are milliseconds, as in the files that the program exports, the
/// times are those of the player, with its gaps between the notes and its whole milliseconds, and
/// the letters follow from velocity and length.
Line lineOf(const Recording& recording, QChar decimalSeparator);

}  // namespace midi_recording
