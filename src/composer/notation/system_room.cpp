#include "composer/notation/system_room.h"

#include "composer/notation/system_ink.h"

#include <algorithm>
#include <utility>

namespace notation {
namespace {

using engraving::kTopLine;
using engraving::Reach;

/// In half spaces.
constexpr double kBracketDistance = 2;
constexpr double kSignDistance = 2;
constexpr double kLeastAbove = 7;  ///< the treble clef needs three
constexpr double kLeastGap = 9;
constexpr double kLeastBelow = 2;
constexpr double kNumberRoom = 2.6;  ///< for the numbers of entries, below the ink
constexpr double kAir = 1;           ///< beyond the outermost ink
constexpr double kNoteRoom = 4;      ///< beyond the middle of a head, for an articulation

/// Of some symbols with their articulations, the stave included.
Reach reachOf(const System& system, const Span& span) {
    Reach reach{0, kTopLine};
    const auto include = [&reach](const Reach& other) {
        reach.low = std::min(reach.low, other.low);
        reach.high = std::max(reach.high, other.high);
    };
    for (std::size_t i = span.first; i <= span.last; ++i)
        include(reachOf(system.symbols[i]));
    for (const ArticulationMark& mark : system.articulations) {
        if (mark.symbol >= span.first && mark.symbol <= span.last)
            include(reachOf(system, mark));
    }
    return reach;
}

/// A bracket stands on the side of the stems of most notes; over rests above.
bool standsAbove(const System& system, const Span& span) {
    int up = 0;
    for (std::size_t i = span.first; i <= span.last; ++i) {
        const Symbol& symbol = system.symbols[i];
        if (!symbol.rest)
            up += engraving::stemGoesUp(symbol.note) ? 1 : -1;
    }
    return up >= 0;
}

/// Beyond the stem of its note, clear of all other ink and of the signs before it.
void placeSign(System& system, DurationSign sign) {
    const Symbol& symbol = system.symbols[sign.symbol];
    const double middle = symbol.x + middleOf(symbol);
    const Reach reach = reachBetween(system, symbol.staff, middle - symbol.signWidth / 2,
                                     middle + symbol.signWidth / 2);
    const bool above = symbol.rest || engraving::stemGoesUp(symbol.note);
    sign.position = above ? reach.high + kSignDistance : reach.low - kSignDistance;
    system.durationSigns.push_back(sign);
}

}  // namespace

void placeOutside(System& system, const std::vector<Span>& triplets) {
    for (const Span& span : triplets) {
        const bool above = standsAbove(system, span);
        const Reach reach = reachOf(system, span);
        const double position =
            above ? reach.high + kBracketDistance : reach.low - kBracketDistance;
        system.triplets.push_back({span, system.symbols[span.first].staff, above, position});
    }
    for (const DurationSign& sign : std::exchange(system.durationSigns, {}))
        placeSign(system, sign);
}

void makeRoom(System& system, bool everyNote) {
    double above = kLeastAbove;
    double gap = kLeastGap;
    double below = kLeastBelow;
    const auto include = [&](Staff staff, const Reach& reach) {
        const double over = reach.high - kTopLine + kAir;
        const double under = -reach.low + kAir;
        const bool treble = staff == Staff::Treble;
        (treble ? above : gap) = std::max(treble ? above : gap, over);
        (treble ? gap : below) = std::max(treble ? gap : below, under);
    };
    for (const Symbol& symbol : system.symbols)
        include(symbol.staff, reachOf(symbol));
    for (const ArticulationMark& mark : system.articulations)
        include(system.symbols[mark.symbol].staff, reachOf(system, mark));
    for (const TripletBracket& bracket : system.triplets)
        include(bracket.staff, reachOf(bracket));
    for (const DurationSign& sign : system.durationSigns)
        include(system.symbols[sign.symbol].staff, reachOf(sign));
    system.ink = below;
    below += kNumberRoom;
    if (everyNote) {
        above = std::max<double>(above, kHighestPosition - kTopLine + kNoteRoom);
        below = std::max<double>(below, -kLowestPosition + kNoteRoom);
    }
    system.above = above;
    system.gap = gap;
    system.below = below;
}

}  // namespace notation
