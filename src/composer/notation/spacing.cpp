#include "composer/notation/spacing.h"

#include <algorithm>
#include <cmath>

namespace notation {
namespace {

constexpr double kShortest = 1.5;
constexpr double kQuarterMore = 1.9;
constexpr double kGrowth = 0.6;
constexpr double kLeastGap = 0.3;        ///< between the ink of two symbols
constexpr double kLeastInkGap = 0.1;     ///< where one is a ledger line
constexpr double kShortestLedger = 0.2;  ///< beyond its head
constexpr double kTieRoom = 1.3;  ///< between the ink of two heads, so that the tie can be seen
constexpr double kBeforeBarLine = 0.6;
constexpr double kSignGap = 0.4;  ///< between the signs of two durations

bool hasLedgerLines(const Symbol& symbol) {
    return !symbol.rest && engraving::ledgerLines(symbol.note.position) > 0;
}

bool hasAccidental(const Symbol& symbol) {
    return !symbol.rest && symbol.note.accidental != engraving::Accidental::None;
}

/// Before another symbol of the bar.
double leastInBar(const Symbol& symbol, const Symbol& next) {
    const double right = extentOf(symbol).right;
    const double left = extentOf(next).left;
    const double head = symbol.rest ? right : engraving::headWidth(symbol.value.duration);
    // Ledger lines may reach into the gap before a head that has none.
    const bool bare = right <= head + glyph_table::kLedgerLineExtension;
    double least = (bare ? head : right) + kLeastGap;
    if (hasAccidental(next))
        return std::max(least, right + kLeastInkGap) + left;
    if (!bare && hasLedgerLines(next))
        return std::max(least, right + kLeastInkGap + left);
    if (bare && shareLedgerLines(symbol, next))
        return std::max(least, head + 2 * kShortestLedger + kLedgerGap);
    return least;
}

double leastDistance(const Symbol& symbol, const Symbol* next) {
    const engraving::Extent extent = extentOf(symbol);
    double least = extent.right + kLeastGap;
    if (symbol.endsBar)
        least = extent.right + kBeforeBarLine + (next ? kBehindBarLine + extentOf(*next).left : 0);
    else if (next)
        least = leastInBar(symbol, *next);
    else
        least = std::max(least, extentWithSign(symbol).right + kLeastGap);
    if (next && symbol.signWidth > 0 && next->signWidth > 0) {
        const double signs = (symbol.signWidth + next->signWidth) / 2 + kSignGap;
        least = std::max(least, signs + middleOf(symbol) - middleOf(*next));
    }
    if (symbol.tiedToNext()) {
        const bool dots = symbol.note.dots > 0;
        const double ink = dots ? extent.right : engraving::headWidth(symbol.value.duration);
        least = std::max(least, ink + kTieRoom);
    }
    return least;
}

}  // namespace

double spaceAfter(double quarters) {
    return kShortest + kQuarterMore * std::pow(quarters, kGrowth);
}

std::vector<Distance> distancesOf(const std::vector<Symbol>& symbols) {
    std::vector<Distance> distances;
    distances.reserve(symbols.size());
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        const Symbol* next = i + 1 < symbols.size() ? &symbols[i + 1] : nullptr;
        const double barLine = symbols[i].endsBar && next ? kBehindBarLine : 0;
        distances.push_back(
            {spaceAfter(symbols[i].length) + barLine, leastDistance(symbols[i], next)});
    }
    return distances;
}

double stretchToFill(const std::vector<Distance>& distances, double room) {
    const auto filled = [&](double stretch) {
        double sum = 0;
        for (const Distance& distance : distances)
            sum += std::max(distance.wanted * stretch, distance.least);
        return sum;
    };
    double low = 0;
    double high = 1;
    while (filled(high) < room && high < 1e6)
        high *= 2;
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2;
        (filled(middle) < room ? low : high) = middle;
    }
    return low;
}

}  // namespace notation
