#pragma once

#include "core/grand_staff.h"
#include "core/pitch.h"

#include <QString>

#include <array>

/// The staff steps of the reading drill: the places where a note picture can stand. The bass-clef
/// system carries the steps 11..31, which are diatonic positions (28 is middle C); the treble-clef
/// system carries 40..64, which are diatonic positions raised by 16 (44 is middle C). The steps
/// between them carry no note.
namespace staff_step {

constexpr int kBassLowest = 11;
constexpr int kBassHighest = 31;
constexpr int kTrebleLowest = 40;
constexpr int kTrebleHighest = 64;
constexpr int kTrebleShift = 16;
constexpr int kCount = (kBassHighest - kBassLowest + 1) + (kTrebleHighest - kTrebleLowest + 1);

constexpr bool isTreble(int step) {
    return step >= kTrebleLowest && step <= kTrebleHighest;
}
constexpr bool isBass(int step) {
    return step >= kBassLowest && step <= kBassHighest;
}
constexpr bool carriesNote(int step) {
    return isTreble(step) || isBass(step);
}

/// The diatonic position of a step (14 is the Do of note number 36).
constexpr int diatonicPosition(int step) {
    return step >= kTrebleLowest ? step - kTrebleShift : step;
}

/// The degree 0 (Do) to 6 (Si) of a step.
constexpr int degree(int step) {
    return diatonicPosition(step) % pitch::kDegrees;
}

/// The note that sounds for a step; the three steps below the range sound its lowest note.
pitch::NoteIndex soundingNote(int step);

/// All steps that carry a note, from the lowest to the highest.
constexpr std::array<int, kCount> all() {
    std::array<int, kCount> steps{};
    std::size_t i = 0;
    for (int step = kBassLowest; step <= kTrebleHighest; ++step) {
        if (carriesNote(step))
            steps[i++] = step;
    }
    return steps;
}

/// The step of each system's lowest line; the five lines are two steps apart.
constexpr int kTrebleBottomLine = grand_staff::kTrebleBottomStep + kTrebleShift;
constexpr int kBassBottomLine = grand_staff::kBassBottomStep;

/// Where the step stands, in words that do not name its note: "Chiave di Sol, seconda linea",
/// "Chiave di Fa, primo taglio addizionale in alto". For readers who cannot see the staff.
QString placeInWords(int step);

/// The same in two parts, for who has been told the clef already: "Chiave di Sol" and "seconda
/// linea".
QString clefInWords(int step);
QString placeOnStaveInWords(int step);

}  // namespace staff_step
