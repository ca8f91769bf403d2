#include "composer/notation/note_place.h"

#include <algorithm>
#include <cmath>

namespace notation {

Head headOf(int noteNumber, Staff staff) {
    const auto natural = pitch::NoteNumberToStep(noteNumber);
    const int step = natural ? *natural : pitch::NoteNumberToStep(noteNumber - 1).value_or(0);
    return {step - bottomStep(staff), !natural};
}

int noteAt(Staff staff, double position) {
    const double step = std::round(position) + bottomStep(staff);
    const double nearest = std::clamp<double>(step, pitch::kLowestStep, pitch::kHighestStep);
    const auto index = pitch::StepToNoteIndex(static_cast<int>(nearest));
    return pitch::noteNumberOf(index.value_or(0));
}

}  // namespace notation
