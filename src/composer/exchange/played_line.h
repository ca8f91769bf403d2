#pragma once

#include "composer/exchange/midi_recording.h"
#include "composer/melody/melody.h"

#include <QChar>

#include <optional>
#include <vector>

namespace midi_recording {

/// A note or a rest of one voice.
struct Value {
    int note = 0;  ///< 0 for a rest
    int units = 0;
    char letter = 'n';
};

MelodyEntry entryOf(const Value& value, QChar decimalSeparator);

/// The values of a recording whose ticks are the milliseconds of this program's player, at a tempo;
/// nothing if they are not its times.
std::optional<std::vector<Value>> playedLine(const Recording& recording, int tempo);

}  // namespace midi_recording
