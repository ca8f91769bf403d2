#pragma once

#include "core/letter.h"
#include "core/note_values.h"

#include <QString>

#include <optional>
#include <vector>

/// An entry of the melody as the staff shows it: which note values make up its duration.
namespace staff_entry {

struct Entry {
    int noteNumber = 0;   ///< 36..95; anything else is a rest
    double duration = 1;  ///< in quarter notes
    char attribute = letter::kNormale.front().toLatin1();
};

struct Value {
    note_values::Duration duration = note_values::Duration::Quarter;
    int dots = 0;
};

/// What is engraved for a duration in music without bars: values tied together, all of which last
/// two thirds of their time under a triplet sign. A duration that no such figure has is the nearest
/// value and not exact.
struct Figure {
    std::vector<Value> values;
    bool triplet = false;
    bool exact = true;
};

/// The most values of a figure; four dotted semibreves, the longest multiple, take six.
constexpr int kMostValues = 6;

/// Always at least one value.
Figure figureOf(double duration);

bool isRest(const Entry& entry);

/// The row of a letter that is engraved; null for a rest and any other letter.
const letter::EntryLetter* engravedLetter(const Entry& entry);

/// Nothing for a rest, and for a letter that has no sign or is unknown.
std::optional<glyph_table::ArticulationSign> articulationOf(const Entry& entry);

/// The sign beside a figure that is not exact: "[×0,1]", in the locale's format.
QString durationSign(double duration);

/// The room that the sign is given, in staff spaces.
double durationSignWidth(double duration);

}  // namespace staff_entry
