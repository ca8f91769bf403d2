#include "composer/notation/system_room.h"

#include "composer/notation/system_ink.h"

#include <algorithm>
#include <utility>

namespace notation {
namespace {

using engraving::Reach;

/// In half spaces.
constexpr double kBracketDistance = 2;
constexpr double kSignDistance = 2;
constexpr double kLeastAbove = 6;  ///< the treble clef needs three
constexpr double kLeastGap = 9;
constexpr double kLeastBelow = 2;
constexpr double kNumberRoom = 2.2;  ///< for the numbers of entries, below the ink
constexpr double kAir = 1;           ///< beyond the outermost ink
constexpr double kNoteRoom = 4;      ///< beyond the middle of a head, for an articulation

/// In staff spaces.
constexpr double kBeside = 0.3;

bool isOnBothStaves(const System& system, const Span& span) {
    const Staff staff = system.symbols[span.first].staff;
    for (std::size_t i = span.first; i <= span.last; ++i) {
        if (system.symbols[i].staff != staff)
            return true;
    }
    return false;
}

/// On the side of the stems of most notes; over rests above.
bool standsAbove(const System& system, const Span& span) {
    int up = 0;
    for (std::size_t i = span.first; i <= span.last; ++i) {
        const Symbol& symbol = system.symbols[i];
        if (!symbol.rest)
            up += engraving::stemGoesUp(symbol.note) ? 1 : -1;
    }
    return up >= 0;
}

TripletBracket bracketOver(const System& system, const Span& span, const std::vector<Ink>& inks) {
    // Between the staves a bracket would be in the way of notes on both of them.
    const bool isOnBoth = isOnBothStaves(system, span);
    const Symbol& first = system.symbols[span.first];
    const Symbol& last = system.symbols[span.last];
    const Staff staff = isOnBoth ? Staff::Treble : first.staff;
    const bool above = isOnBoth || standsAbove(system, span);
    const Reach reach =
        reachBetween(inks, staff, first.x - kBeside, last.x + extentOf(last).right + kBeside);
    const double position = above ? reach.high + kBracketDistance : reach.low - kBracketDistance;
    return {span, staff, above, position};
}

/// Beyond the stem of its note, clear of all other ink and of the signs before it.
double positionOf(const System& system, const DurationSign& sign, const std::vector<Ink>& inks) {
    const Symbol& symbol = system.symbols[sign.symbol];
    const Ink place = inkOf(system, sign);
    const Reach reach = reachBetween(inks, symbol.staff, place.left, place.right);
    const bool above = symbol.rest || engraving::stemGoesUp(symbol.note);
    return above ? reach.high + kSignDistance : reach.low - kSignDistance;
}

/// Between the staves: room for what is under the treble staff or over the bass staff, and for both
/// where they meet.
double gapFor(const std::vector<Ink>& inks) {
    double gap = kLeastGap;
    for (const Ink& ink : inks) {
        const bool treble = ink.staff == Staff::Treble;
        const double reach = treble ? ink.under() : ink.over();
        gap = std::max(gap, reach + kAir);
        if (!treble || reach <= 0)
            continue;
        for (const Ink& other : inks) {
            if (other.staff == Staff::Bass && other.over() > 0 &&
                other.isAt(ink.left - kBeside, ink.right + kBeside))
                gap = std::max(gap, reach + other.over() + kAir);
        }
    }
    return gap;
}

}  // namespace

void placeOutside(System& system, const std::vector<Span>& triplets) {
    std::vector<DurationSign> signs = std::exchange(system.durationSigns, {});
    if (triplets.empty() && signs.empty())
        return;
    std::vector<Ink> inks = inksOf(system);
    for (const Span& span : triplets)
        system.triplets.push_back(bracketOver(system, span, inks));
    if (!signs.empty())
        inks = inksOf(system);
    for (DurationSign& sign : signs) {
        sign.position = positionOf(system, sign, inks);
        inks.push_back(inkOf(system, sign));
    }
    system.durationSigns = std::move(signs);
}

void makeRoom(System& system, bool everyNote) {
    const std::vector<Ink> inks = inksOf(system);
    double above = kLeastAbove;
    double below = kLeastBelow;
    for (const Ink& ink : inks) {
        if (ink.staff == Staff::Treble)
            above = std::max(above, ink.over() + kAir);
        else
            below = std::max(below, ink.under() + kAir);
    }
    system.ink = below;
    below += kNumberRoom;
    system.above = above;
    system.gap = gapFor(inks);
    system.below = below;
    if (everyNote) {
        system.above = std::max<double>(above, kHighestPosition - engraving::kTopLine + kNoteRoom);
        system.below = std::max<double>(below, -kLowestPosition + kNoteRoom);
    }
    system.spareAbove = system.above - above;
    system.spareBelow = system.below - below;
}

}  // namespace notation
