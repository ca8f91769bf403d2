#include "composer/notation/system_ink.h"

#include <algorithm>

namespace notation {
namespace {

using engraving::Reach;

/// In half spaces.
constexpr double kTieReach = 3;
constexpr double kArticulationReach = 1.2;
constexpr double kBracketReach = 1.6;
constexpr double kSignReach = 1.6;

/// A stretch of the staff, and the ink found over and under it.
class Skyline {
public:
    Skyline(double left, double right) : left_(left), right_(right) {}

    void include(double left, double right, const Reach& reach) {
        if (right <= left_ || left >= right_)
            return;
        reach_.low = std::min(reach_.low, reach.low);
        reach_.high = std::max(reach_.high, reach.high);
    }

    /// A beam from the stem of one symbol to that of another.
    void includeBeam(const Symbol& first, const Symbol& last) {
        const double slope = (last.stemEnd - first.stemEnd) / (last.x - first.x);
        const auto at = [&](double x) {
            return first.stemEnd + slope * (std::clamp(x, first.x, last.x) - first.x);
        };
        const auto [low, high] = std::minmax({at(left_), at(right_)});
        include(first.x, last.x, {low, high});
    }

    const Reach& reach() const { return reach_; }

private:
    double left_;
    double right_;
    Reach reach_{0, engraving::kTopLine};
};

}  // namespace

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

Reach reachOf(const TripletBracket& bracket) {
    return {bracket.position - kBracketReach, bracket.position + kBracketReach};
}

Reach reachOf(const DurationSign& sign) {
    return {sign.position - kSignReach, sign.position + kSignReach};
}

Reach reachBetween(const System& system, Staff staff, double left, double right) {
    Skyline skyline(left, right);
    const auto include = [&](const Symbol& first, const Symbol& last, const Reach& reach) {
        if (first.staff == staff) {
            skyline.include(first.x - extentOf(first).left, last.x + extentOf(last).right, reach);
        }
    };
    const std::vector<Symbol>& symbols = system.symbols;
    for (const Symbol& symbol : symbols)
        include(symbol, symbol, reachOf(symbol));
    for (const ArticulationMark& mark : system.articulations)
        include(symbols[mark.symbol], symbols[mark.symbol], reachOf(system, mark));
    for (const TripletBracket& bracket : system.triplets) {
        const auto& [first, last] = bracket.symbols;
        include(symbols[first], symbols[last], reachOf(bracket));
    }
    for (const Beam& beam : system.beams) {
        if (symbols[beam.notes.first].staff == staff)
            skyline.includeBeam(symbols[beam.notes.first], symbols[beam.notes.last]);
    }
    for (const DurationSign& sign : system.durationSigns) {
        const Symbol& symbol = symbols[sign.symbol];
        const double middle = symbol.x + middleOf(symbol);
        if (symbol.staff == staff) {
            skyline.include(middle - symbol.signWidth / 2, middle + symbol.signWidth / 2,
                            reachOf(sign));
        }
    }
    return skyline.reach();
}

}  // namespace notation
