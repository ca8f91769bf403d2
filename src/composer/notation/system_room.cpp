#include "composer/notation/system_room.h"

#include <algorithm>

namespace notation {
namespace {

using engraving::kTopLine;
using engraving::Reach;

/// In half spaces.
constexpr double kBracketDistance = 2;
constexpr double kBracketHeight = 1.6;
constexpr double kSignHeight = 1.6;
constexpr double kTieReach = 3;
constexpr double kArticulationReach = 1.2;
constexpr double kLeastAbove = 7;  ///< the treble clef needs three
constexpr double kLeastGap = 9;
constexpr double kLeastBelow = 2;
constexpr double kNumberRoom = 2.6;  ///< for the numbers of entries, below the ink
constexpr double kAir = 1;           ///< beyond the outermost ink
constexpr double kNoteRoom = 4;      ///< beyond the middle of a head, for an articulation

Reach reachOf(const Symbol& symbol) {
    if (symbol.rest)
        return engraving::restReach(symbol.value.duration);
    Reach reach = engraving::reachOf(symbol.note);
    if (symbol.note.beamed) {
        reach.low = std::min(reach.low, symbol.stemEnd);
        reach.high = std::max(reach.high, symbol.stemEnd);
    }
    if (symbol.tiedToNext()) {
        const bool below = engraving::stemGoesUp(symbol.note);
        (below ? reach.low : reach.high) = symbol.note.position + (below ? -kTieReach : kTieReach);
    }
    return reach;
}

Reach reachOf(const System& system, const ArticulationMark& mark) {
    const Symbol& symbol = system.symbols[mark.symbol];
    const double position =
        engraving::articulationPosition(symbol.note, mark.sign, symbol.tiedToNext());
    return {position - kArticulationReach, position + kArticulationReach};
}

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

}  // namespace

void placeOutside(System& system, const std::vector<Span>& triplets) {
    for (const Span& span : triplets) {
        const bool above = standsAbove(system, span);
        const Reach reach = reachOf(system, span);
        const double position =
            above ? reach.high + kBracketDistance : reach.low - kBracketDistance;
        system.triplets.push_back({span, system.symbols[span.first].staff, above, position});
    }
    for (DurationSign& sign : system.durationSigns) {
        const Symbol& symbol = system.symbols[sign.symbol];
        sign.position =
            symbol.rest ? engraving::kRestSignPosition : engraving::signPosition(symbol.note);
    }
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
    for (const TripletBracket& bracket : system.triplets) {
        include(bracket.staff,
                {bracket.position - kBracketHeight, bracket.position + kBracketHeight});
    }
    for (const DurationSign& sign : system.durationSigns) {
        include(system.symbols[sign.symbol].staff,
                {sign.position - kSignHeight, sign.position + kSignHeight});
    }
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
