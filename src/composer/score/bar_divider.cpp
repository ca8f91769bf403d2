#include "composer/score/bar_divider.h"

#include "composer/score/triplet_groups.h"

#include <algorithm>
#include <limits>

namespace score {
namespace {

/// A position that no values but triplets reach is no multiple of this.
constexpr int kPlainGrid = 3;

}  // namespace

BarDivider::BarDivider(const std::optional<Metre>& metre)
    : barUnits_(metre ? metre->units() : std::numeric_limits<int>::max()) {}

bool BarDivider::canWrite(int units) const {
    const int room = barIsFull() ? barUnits_ : barUnits_ - position_;
    const int first = std::min(units, room);
    const int last = (units - first) % barUnits_;
    return !valuesOf(first).empty() && (last == 0 || !valuesOf(last).empty());
}

int BarDivider::append(WrittenNote& note, int units) {
    if (bars_.empty() || barIsFull()) {
        bars_.emplace_back();
        position_ = 0;
    }
    const int part = std::min(units, barUnits_ - position_);
    std::vector<WrittenValue> values = valuesOf(part);
    // Where a triplet is under way, its value goes on with it.
    const bool inTriplet = position_ % kPlainGrid != 0;
    if (values.size() > 1 && values.back().triplet && inTriplet)
        std::rotate(values.begin(), values.end() - 1, values.end());
    for (std::size_t i = 0; i < values.size(); ++i) {
        note.value = values[i];
        note.closesEntry = part == units && i + 1 == values.size();
        note.tiedOn = !note.isRest() && !note.closesEntry;
        bars_.back().notes.push_back(note);
        note.tiedBack = !note.isRest();
        note.letter = nullptr;
    }
    position_ += part;
    return units - part;
}

void finishBar(Bar& bar, const Notation& notation) {
    groupTriplets(bar.notes);
    Accidentals accidentals(notation.key);
    accidentals.setRepeats(!notation.metre);
    for (WrittenNote& note : bar.notes) {
        if (note.isRest())
            continue;
        note.spelling = spell(note.note, notation.key);
        if (note.tiedBack)
            accidentals.tieIn(note.spelling);
        else
            note.accidental = accidentals.signFor(note.spelling);
    }
}

}  // namespace score
