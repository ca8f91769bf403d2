#include "composer/score/bar_view.h"

#include "composer/melody/melody.h"
#include "composer/score/triplet_groups.h"

#include <algorithm>
#include <limits>

namespace score {
namespace {

/// Divides entries at the bar lines, into values that can be written.
class BarWriter {
public:
    explicit BarWriter(const std::optional<Metre>& metre)
        : barUnits_(metre ? metre->units() : std::numeric_limits<int>::max()) {}

    /// Whether the entry can be written.
    bool add(int index, const MelodyEntry& entry) {
        const letter::EntryLetter* const row = letter::find(entry.attribute);
        const std::optional<int> units = unitsOf(entry.quarters());
        if (!row || !units || *units > kLongestMelody - total_)
            return false;
        total_ += *units;
        WrittenNote note;
        note.entry = index;
        note.letter = row;
        if (!row->isRest() && pitch::isPlayable(entry.noteNumber()))
            note.note = entry.noteNumber();
        return append(note, *units);
    }

    std::vector<Bar> takeBars() { return std::move(bars_); }

private:
    bool append(WrittenNote note, int units) {
        bool written = true;
        while (units > 0) {
            if (bars_.empty() || position_ == barUnits_) {
                bars_.emplace_back();
                position_ = 0;
            }
            const int part = std::min(units, barUnits_ - position_);
            units -= part;
            written = appendPart(note, part, units == 0) && written;
            position_ += part;
        }
        return written;
    }

    bool appendPart(WrittenNote& note, int units, bool isLast) {
        std::vector<WrittenValue> values = valuesOf(units);
        // Where a triplet is under way, its value goes on with it.
        const bool inTriplet = position_ % kPlainGrid != 0;
        if (values.size() > 1 && values.back().triplet && inTriplet)
            std::rotate(values.begin(), values.end() - 1, values.end());
        for (std::size_t i = 0; i < values.size(); ++i) {
            note.value = values[i];
            note.tiedOn = !note.isRest() && !(isLast && i + 1 == values.size());
            bars_.back().notes.push_back(note);
            note.tiedBack = !note.isRest();
            note.letter = nullptr;
        }
        return !values.empty();
    }

    /// A position that no values but triplets reach is no multiple of this.
    static constexpr int kPlainGrid = 3;

    int barUnits_;
    int position_ = 0;  ///< in the last bar
    int total_ = 0;
    std::vector<Bar> bars_;
};

void spellNotes(std::vector<Bar>& bars, const Notation& notation) {
    Accidentals accidentals(notation.key);
    accidentals.setRepeats(!notation.metre);
    for (Bar& bar : bars) {
        accidentals.startBar();
        for (WrittenNote& note : bar.notes) {
            if (note.isRest())
                continue;
            note.spelling = spell(note.note, notation.key);
            if (!note.tiedBack)
                note.accidental = accidentals.signFor(note.spelling);
        }
    }
}

}  // namespace

BarView barsOf(const Melody& melody, const Notation& notation) {
    BarView view;
    view.notation = notation;
    BarWriter writer(notation.metre);
    for (int i = 0; i < melody.EntryCount(); ++i) {
        if (!writer.add(i, melody.entry(i)))
            view.unwritable.push_back(i);
    }
    if (!view.unwritable.empty())
        return view;
    view.bars = writer.takeBars();
    for (Bar& bar : view.bars)
        groupTriplets(bar.notes);
    spellNotes(view.bars, notation);
    return view;
}

}  // namespace score
