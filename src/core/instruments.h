#pragma once

#include <QString>

#include <vector>

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

/// What a program 0..127 is called in Italian, such as "Violino".
QString italianName(int program);

/// General MIDI has the programs in families of eight.
constexpr int kProgramsInFamily = 8;
constexpr int kFamilies = kCount / kProgramsInFamily;

/// The Italian name of a family 0..15.
QString familyName(int family);

/// The programs of which the caption, the Italian name or the family's name contains every word of
/// a text, in upper or lower case; all programs for an empty text.
std::vector<int> find(const QString& words);

}  // namespace instruments
