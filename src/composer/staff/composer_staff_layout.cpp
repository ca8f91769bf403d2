#include "composer/staff/composer_staff_layout.h"

#include "core/grand_staff.h"
#include "core/pitch.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace composer_staff_layout {
namespace {

using grand_staff::kBassBottomStep;
using grand_staff::kTrebleBottomStep;
using pitch::kMiddleCStep;

/// Half way between middle C and the note below it, which stand in different staves.
constexpr double kSplit = ((kTrebleBottomLine + kTrebleBottomStep - kMiddleCStep) +
                           (kBassBottomLine + kBassBottomStep - (kMiddleCStep - 1))) /
                          2.0;

/// In staff spaces. What follows a value grows with its length.
constexpr double kLead = 0.55;
constexpr std::array kTrail{3.2, 2.5, 1.9, 1.5, 1.2, 1.0, 0.9};
static_assert(kTrail.size() == note_values::kAll.size());
constexpr double kFlagTrail = 0.5;  ///< at least this much is left free behind flags and dots
constexpr double kSignCharacter = 0.8;

engraving::Note noteOf(const Head& head, const staff_entry::Value& value, bool first) {
    const bool sharp = head.sharp && first;
    return {head.position, value.duration,
            sharp ? engraving::Accidental::Sharp : engraving::Accidental::None, value.dots};
}

engraving::Extent extentOf(const staff_entry::Entry& entry, const staff_entry::Value& value,
                           bool first) {
    if (staff_entry::isRest(entry))
        return {0, engraving::restWidth(value.duration, value.dots)};
    return engraving::extentOf(noteOf(headOf(entry.noteNumber), value, first));
}

}  // namespace

Head headOf(int noteNumber) {
    const auto natural = pitch::NoteNumberToStep(noteNumber);
    const int step = natural ? *natural : pitch::NoteNumberToStep(noteNumber - 1).value_or(0);
    const bool treble = noteNumber >= pitch::kMiddleC;
    return {treble ? System::Treble : System::Bass,
            step - (treble ? kTrebleBottomStep : kBassBottomStep), !natural};
}

double placeOf(const Head& head) {
    return (head.system == System::Treble ? kTrebleBottomLine : kBassBottomLine) - head.position;
}

int noteAt(double place) {
    const bool treble = place < kSplit;
    const double step = treble ? kTrebleBottomStep + kTrebleBottomLine - place
                               : kBassBottomStep + kBassBottomLine - place;
    const int lowest = treble ? kMiddleCStep : pitch::kLowestStep;
    const int highest = treble ? pitch::kHighestStep : kMiddleCStep - 1;
    const double nearest = std::clamp<double>(std::round(step), lowest, highest);
    const auto index = pitch::StepToNoteIndex(static_cast<int>(nearest));
    return pitch::noteNumberOf(index.value_or(0));
}

Cell cellOf(const staff_entry::Entry& entry, const staff_entry::Figure& figure) {
    Cell cell;
    double x = kLead;
    for (const staff_entry::Value& value : figure.values) {
        const auto extent = extentOf(entry, value, cell.heads.empty());
        x += extent.left;
        cell.heads.push_back(x);
        const double trail = kTrail[static_cast<std::size_t>(value.duration)];
        x += std::max(engraving::headWidth(value.duration) + trail, extent.right + kFlagTrail);
    }
    if (!figure.exact) {
        const auto length = staff_entry::durationSign(entry.duration).size();
        x = std::max(x, static_cast<double>(length) * kSignCharacter);
    }
    cell.width = x;
    return cell;
}

std::vector<Placed> arrange(const View& view, int count, double room, const WidthOf& widthOf) {
    if (count <= 0)
        return {};
    const int start = std::clamp(view.entry, 0, count - 1);
    std::vector<Placed> before;
    std::vector<Placed> after{{start, 0, widthOf(start)}};
    double used = after.front().width;
    const auto take = [&](std::vector<Placed>& side, int entry, int step) {
        for (; entry >= 0 && entry < count; entry += step) {
            const double width = widthOf(entry);
            if (used + width > room)
                return;
            side.push_back({entry, 0, width});
            used += width;
        }
    };
    if (view.endsThere)
        take(before, start - 1, -1);
    take(after, start + 1, 1);
    if (!view.endsThere)
        take(before, start - 1, -1);

    std::vector<Placed> placed(before.rbegin(), before.rend());
    placed.insert(placed.end(), after.begin(), after.end());
    const bool atLeft =
        placed.front().entry == 0 || (!view.endsThere && placed.back().entry != count - 1);
    double left = atLeft ? 0 : room - used;
    for (Placed& cell : placed) {
        cell.left = left;
        left += cell.width;
    }
    return placed;
}

View following(const View& view, const std::vector<Placed>& shown, int entry) {
    if (!shown.empty() && entry < shown.front().entry)
        return {entry, true};
    if (!shown.empty() && entry > shown.back().entry)
        return {entry, false};
    return view;
}

}  // namespace composer_staff_layout
