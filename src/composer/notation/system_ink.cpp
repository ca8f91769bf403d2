#include "composer/notation/system_ink.h"

#include <algorithm>

namespace notation {
namespace {

using engraving::Reach;

/// In half spaces.
constexpr double kArticulationReach = 1.2;
constexpr double kBracketReach = 1.6;
constexpr double kSignReach = 1.6;

/// Of some symbols that stand beside each other.
Ink inkOf(const Symbol& first, const Symbol& last, const Reach& reach) {
    return {first.staff, first.x - extentOf(first).left, last.x + extentOf(last).right, reach};
}

Ink inkOf(const Symbol& symbol) {
    if (symbol.rest)
        return inkOf(symbol, symbol, engraving::restReach(symbol.value.duration));
    Reach reach = engraving::reachOf(symbol.note);
    if (symbol.note.beamed) {
        reach.low = std::min(reach.low, symbol.stemEnd);
        reach.high = std::max(reach.high, symbol.stemEnd);
    }
    return inkOf(symbol, symbol, reach);
}

/// Between two stems.
Ink inkOfBeam(const Symbol& first, const Symbol& last) {
    const auto [low, high] = std::minmax(first.stemEnd, last.stemEnd);
    return {first.staff, first.x, last.x, {low, high}};
}

Ink inkOf(const Symbol& symbol, const ArticulationMark& mark) {
    const double middle = engraving::articulationPosition(symbol.note, mark.sign);
    return inkOf(symbol, symbol, {middle - kArticulationReach, middle + kArticulationReach});
}

Ink inkOf(const System& system, const TripletBracket& bracket) {
    const auto& [first, last] = bracket.symbols;
    Ink ink = inkOf(system.symbols[first], system.symbols[last],
                    {bracket.position - kBracketReach, bracket.position + kBracketReach});
    ink.staff = bracket.staff;
    return ink;
}

}  // namespace

Ink inkOf(const System& system, const DurationSign& sign) {
    const Symbol& symbol = system.symbols[sign.symbol];
    const double middle = symbol.x + middleOf(symbol);
    return {symbol.staff,
            middle - symbol.signWidth / 2,
            middle + symbol.signWidth / 2,
            {sign.position - kSignReach, sign.position + kSignReach}};
}

std::vector<Ink> inksOf(const System& system) {
    const std::vector<Symbol>& symbols = system.symbols;
    std::vector<Ink> inks;
    inks.reserve(2 * symbols.size());
    for (const Symbol& symbol : symbols)
        inks.push_back(inkOf(symbol));
    for (const Beam& beam : system.beams) {
        for (std::size_t i = beam.notes.first; i < beam.notes.last; ++i)
            inks.push_back(inkOfBeam(symbols[i], symbols[i + 1]));
    }
    for (const ArticulationMark& mark : system.articulations)
        inks.push_back(inkOf(symbols[mark.symbol], mark));
    for (const Tie& tie : system.ties)
        inks.push_back({symbols[tie.symbols.first].staff, tie.left, tie.right, reachOf(tie)});
    for (const TripletBracket& bracket : system.triplets)
        inks.push_back(inkOf(system, bracket));
    for (const DurationSign& sign : system.durationSigns)
        inks.push_back(inkOf(system, sign));
    return inks;
}

Reach reachBetween(const std::vector<Ink>& inks, Staff staff, double left, double right) {
    Reach reach{0, engraving::kTopLine};
    for (const Ink& ink : inks) {
        if (ink.staff != staff || !ink.isAt(left, right))
            continue;
        reach.low = std::min(reach.low, ink.reach.low);
        reach.high = std::max(reach.high, ink.reach.high);
    }
    return reach;
}

}  // namespace notation
