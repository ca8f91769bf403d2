#pragma once

#include <QString>

/// A note 36..95 in words that a screen reader speaks well: "Re diesis 3", and "Do centrale" for
/// middle C, which begins the octave 4. Nothing for any other number.
QString noteInWords(int noteNumber);
