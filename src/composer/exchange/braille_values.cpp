#include "composer/exchange/braille_values.h"

#include "composer/exchange/braille_cells.h"

#include <algorithm>
#include <numeric>

namespace braille {
namespace {

using score::WrittenNote;

/// The units of the value that looks the same, or 0 if there is none that is written.
int otherUnits(score::WrittenValue value) {
    const auto row = static_cast<std::size_t>(value.value);
    const std::size_t other = row < kValues.size() ? row + kValues.size() : row - kValues.size();
    value.value = note_values::kWritten[other].duration;
    return value.isWhole() ? value.units() : 0;
}

}  // namespace

bool needsValueSigns(const std::vector<score::WrittenNote>& notes,
                     const std::optional<score::Metre>& metre) {
    const bool hasSmall = std::any_of(notes.begin(), notes.end(), [](const auto& note) {
        return note.value.value >= kFirstSmall;
    });
    const int total =
        std::accumulate(notes.begin(), notes.end(), 0,
                        [](int sum, const WrittenNote& note) { return sum + note.value.units(); });
    // A last bar that is short tells nothing by its length.
    if (!hasSmall || !metre || total != metre->units())
        return hasSmall;
    // How many ways of reading the notes so far last so long; two are as bad as more.
    const int length = metre->units();
    std::vector<int> ways(static_cast<std::size_t>(length) + 1);
    ways[0] = 1;
    for (const WrittenNote& note : notes) {
        std::vector<int> longer(ways.size());
        for (const int units : {note.value.units(), otherUnits(note.value)}) {
            for (int at = units; units > 0 && at <= length; ++at) {
                int& sum = longer[static_cast<std::size_t>(at)];
                sum = std::min(2, sum + ways[static_cast<std::size_t>(at - units)]);
            }
        }
        ways = std::move(longer);
    }
    return ways.back() != 1;
}

}  // namespace braille
