#pragma once

#include <QString>

/// The instrument catalogue: the melodic programs 0..127 of General MIDI, in the program's own
/// wording.
namespace instruments {

constexpr int kCount = 128;
constexpr int kPianoforte = 0;
constexpr int kOrgano = 16;

/// The catalogue name of a program 0..127; the empty text for any other number.
QString InstrumentName(int program);

/// The caption of a program, such as "16-Hammond Organ".
QString caption(int program);

}  // namespace instruments
