#include "composer/score/bar_view.h"

#include "composer/melody/melody.h"
#include "composer/score/bar_divider.h"

namespace score {
namespace {

using Reason = Unwritable::Reason;

/// Brings the entries of a melody to bars.
class BarWriter {
public:
    explicit BarWriter(const std::optional<Metre>& metre) : divider_(metre) {}

    /// Why the entry cannot be written; nothing if it can.
    std::optional<Reason> add(int index, const MelodyEntry& entry) {
        const letter::EntryLetter* const row = letter::find(entry.attribute);
        if (!row)
            return Reason::Letter;
        const std::optional<int> units = unitsOf(entry.quarters());
        if (!units)
            return Reason::Duration;
        if (*units > kLongestMelody - total_)
            return Reason::Length;
        total_ += *units;
        WrittenNote note;
        note.entry = index;
        note.letter = row;
        if (!row->isRest() && pitch::isPlayable(entry.noteNumber()))
            note.note = entry.noteNumber();
        const bool written = divider_.canWrite(*units);
        for (int left = *units; left > 0;)
            left = divider_.append(note, left);
        if (written)
            return std::nullopt;
        return valuesOf(*units).empty() ? Reason::Duration : Reason::BarLine;
    }

    std::vector<Bar> takeBars() { return divider_.takeBars(); }

private:
    BarDivider divider_;
    int total_ = 0;
};

}  // namespace

BarView barsOf(const Melody& melody, const Notation& notation) {
    BarView view;
    view.notation = notation;
    BarWriter writer(notation.metre);
    for (int i = 0; i < melody.EntryCount(); ++i) {
        if (const std::optional<Reason> reason = writer.add(i, melody.entry(i)))
            view.unwritable.push_back({i, *reason});
    }
    if (!view.unwritable.empty())
        return view;
    view.bars = writer.takeBars();
    for (Bar& bar : view.bars)
        finishBar(bar, notation);
    return view;
}

}  // namespace score
