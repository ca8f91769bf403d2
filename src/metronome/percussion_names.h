#pragma once

#include <QString>

/// The instruments of the percussion channel, by the notes that sound them.
namespace percussion_names {

/// What a note sounds, in Italian; the empty text for one that the metronome does not offer.
QString nameOf(int note);

}  // namespace percussion_names
