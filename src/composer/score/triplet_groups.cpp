#include "composer/score/triplet_groups.h"

#include "composer/score/bar_view.h"

#include <algorithm>

namespace score {
namespace {

using Notes = std::vector<WrittenNote>;

constexpr int kMembers = 3;

/// The longest group has three values of this many units.
constexpr int kLongestMember = 4 * kUnitsPerQuarter * 2 / kMembers;

/// Three equal values or, from a quarter note on, one and its half: below that, a value and its
/// half are the beginning of three equal ones, of which the second is divided.
bool isWhole(int sum, int largest) {
    return sum == kMembers * largest || (2 * sum == kMembers * largest && sum >= kUnitsPerQuarter);
}

/// Behind the last note of a whole group that starts at `first`; `first` if there is none.
std::size_t endOfWhole(const Notes& notes, std::size_t first) {
    int sum = 0;
    int largest = 0;  ///< of the members that belong to a triplet beyond doubt
    for (std::size_t i = first; i < notes.size(); ++i) {
        const int units = notes[i].value.units();
        if (!tripletValue(units))
            break;
        sum += units;
        if (notes[i].value.triplet)
            largest = std::max(largest, units);
        if (isWhole(sum, largest))
            return i + 1;
        if (sum > kMembers * kLongestMember)
            break;
    }
    return first;
}

std::size_t endOfIncomplete(const Notes& notes, std::size_t first) {
    int sum = 0;
    std::size_t end = first;
    while (end < notes.size() && notes[end].value.triplet) {
        sum += notes[end].value.units();
        ++end;
        if (sum % kMembers == 0)
            break;
    }
    return end;
}

}  // namespace

void groupTriplets(std::vector<WrittenNote>& notes) {
    std::size_t i = 0;
    while (i < notes.size()) {
        if (!notes[i].value.triplet) {
            ++i;
            continue;
        }
        std::size_t end = endOfWhole(notes, i);
        if (end == i)
            end = endOfIncomplete(notes, i);
        notes[i].groupStarts = true;
        notes[end - 1].groupEnds = true;
        for (; i < end; ++i)
            notes[i].value = *tripletValue(notes[i].value.units());
    }
}

}  // namespace score
