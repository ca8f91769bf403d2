#include "composer/notation/staff_choice.h"

#include "core/engraving_measures.h"
#include "core/pitch.h"

#include <array>

namespace notation {
namespace {

constexpr int kMostLedgerLines = 2;  ///< towards the other staff

/// Counted in ledger lines.
constexpr int kTooFar = 1000;
constexpr int kChange = 7;
constexpr int kChangeAtRest = 4;
constexpr int kChangeInGroup = 40;
constexpr int kUnusual =
    1;  ///< a note below middle C in the treble staff, or one above in the bass
constexpr int kBassFirst = 1;  ///< a melody that fits both begins in the treble staff

constexpr std::array kStaves{Staff::Treble, Staff::Bass};

int costOf(int noteNumber, Staff staff) {
    if (!pitch::isPlayable(noteNumber))
        return 0;
    const int position = headOf(noteNumber, staff).position;
    const int lines = engraving::ledgerLines(position);
    const bool inwards = staff == Staff::Treble ? position < 0 : position > 0;
    if (inwards && lines > kMostLedgerLines)
        return kTooFar;
    const bool usual = (noteNumber >= pitch::kMiddleC) == (staff == Staff::Treble);
    return usual ? lines : lines + kUnusual;
}

/// The least cost of the entries up to one, for each staff that it may stand on.
struct Best {
    std::array<int, 2> cost{};
    std::array<std::size_t, 2> before{};  ///< the staff of the entry before
};

}  // namespace

std::vector<Staff> chooseStaves(const std::vector<StaffQuestion>& entries,
                                std::optional<Staff> before) {
    std::vector<Best> best;
    best.reserve(entries.size());
    std::array<int, 2> cost{0, kBassFirst};
    if (before)
        cost[*before == Staff::Treble ? 1 : 0] = kChange;
    int change = kTooFar;  // the first entry has no other one before it
    for (const StaffQuestion& entry : entries) {
        if (entry.joined)
            change = kChangeInGroup;
        Best next;
        for (std::size_t staff = 0; staff < kStaves.size(); ++staff) {
            const std::size_t other = 1 - staff;
            const bool changes = cost[other] + change < cost[staff];
            next.before[staff] = changes ? other : staff;
            next.cost[staff] = costOf(entry.noteNumber, kStaves[staff]) +
                               (changes ? cost[other] + change : cost[staff]);
        }
        cost = next.cost;
        best.push_back(next);
        change = pitch::isPlayable(entry.noteNumber) ? kChange : kChangeAtRest;
    }

    std::vector<Staff> staves(entries.size());
    std::size_t staff = cost[1] < cost[0] ? 1 : 0;
    for (std::size_t i = entries.size(); i > 0; --i) {
        staves[i - 1] = kStaves[staff];
        staff = best[i - 1].before[staff];
    }
    return staves;
}

}  // namespace notation
