#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// The pitch model. A note number is a MIDI note number (60 is middle C); the program uses the
/// five octaves 36 ("Do") to 95 ("Si"), and 0 for a rest. A note index counts the same notes from
/// 0. A staff step counts natural notes: 7 x octave + degree, the degree being 0 (Do) to 6 (Si),
/// so middle C is step 28. Only sharps are ever named.
namespace pitch {

using NoteNumber = std::int16_t;
using NoteIndex = std::int16_t;

constexpr NoteNumber kLowestNote = 36;
constexpr NoteNumber kHighestNote = 95;
constexpr NoteNumber kMiddleC = 60;
constexpr NoteNumber kRest = 0;
constexpr int kNoteCount = kHighestNote - kLowestNote + 1;

constexpr int kDegrees = 7;
constexpr int kSemitones = 12;  ///< in an octave
constexpr int kMiddleCStep = 28;
constexpr int kLowestStep = 14;
constexpr int kHighestStep = 48;

enum class AnswerNames { Syllables, Letters };

constexpr bool isPlayable(int noteNumber) {
    return noteNumber >= kLowestNote && noteNumber <= kHighestNote;
}
constexpr NoteNumber noteNumberOf(NoteIndex index) {
    return static_cast<NoteNumber>(index + kLowestNote);
}
constexpr NoteIndex noteIndexOf(NoteNumber number) {
    return static_cast<NoteIndex>(number - kLowestNote);
}

/// "Do", "Do#" … "Si" for 36..95, "P" for a rest, the empty text for anything else.
QString NoteName(int noteNumber);

/// The name on an answer button: "DO" … "SI" or "C" … "B" for the degrees 0..6.
QString answerName(int degree, AnswerNames style);

/// The degree 0..6 of a natural note in any octave; nothing for a sharp.
std::optional<int> degreeOf(int noteNumber);

/// The MIDI note number of the natural note at a step, also outside of the five octaves.
int noteNumberOfStep(int step);

/// The note index of the natural note at a step 14..48; nothing for any other step.
std::optional<NoteIndex> StepToNoteIndex(int step);

/// The step of a natural note number of the range; nothing for a sharp or outside 36..95.
std::optional<int> NoteNumberToStep(int noteNumber);

}  // namespace pitch
