#pragma once

#include <QLatin1String>

/// The Italian words for tempos, as they are printed on the scale of a mechanical metronome.
namespace tempo_names {

/// The word for a number of beats per minute. A number where one word ends and the next begins has
/// the faster one.
QLatin1String nameOf(int beatsPerMinute);

}  // namespace tempo_names
