#pragma once

#include "core/note_values.h"
#include "core/pitch.h"

#include <array>

/// The words of MusicXML for what the program knows; a reader and a writer share them.
namespace musicxml {

/// The degrees Do to Si.
constexpr std::array<char, pitch::kDegrees> kSteps{'C', 'D', 'E', 'F', 'G', 'A', 'B'};

/// The types of the note values, from the longest to the shortest.
constexpr std::array<const char*, note_values::kWritten.size()> kTypes{
    "whole", "half", "quarter", "eighth", "16th", "32nd", "64th", "128th"};

/// The articulations, by the letters of entries.
struct Articulation {
    char letter;
    const char* element;
};
constexpr std::array<Articulation, 3> kArticulations{
    {{'s', "staccato"}, {'t', "tenuto"}, {'a', "accent"}}};

/// The root of the only arrangement of a score that is read and written.
constexpr const char* kRoot = "score-partwise";

/// Where a compressed file says which of its files is the score.
constexpr const char* kContainer = "META-INF/container.xml";

}  // namespace musicxml
