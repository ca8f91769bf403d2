#include "composer/notation/spacing.h"

#include <algorithm>
#include <cmath>

namespace notation {
namespace {

constexpr double kShortest = 1.5;
constexpr double kQuarterMore = 1.9;
constexpr double kGrowth = 0.6;
constexpr double kLeastGap = 0.3;  ///< between the ink of two symbols
constexpr double kLedgerGap = 0.1;
constexpr double kTieLength = 2.4;  ///< from head to head, so that the tie can be seen
constexpr double kBeforeBarLine = 0.6;
constexpr double kSignGap = 0.4;  ///< between the signs of two durations

double leastDistance(const Symbol& symbol, const Symbol* next) {
    const engraving::Extent extent = extentOf(symbol);
    const double head = symbol.rest ? extent.right : engraving::headWidth(symbol.value.duration);
    const bool ledger = !symbol.rest && engraving::ledgerLines(symbol.note.position) > 0;
    // Ledger lines may reach into the gap before a symbol that has none.
    const bool bare = extent.right <= head + glyph_table::kLedgerLineExtension;
    double least = (ledger && bare ? head : extent.right) + kLeastGap;
    if (symbol.endsBar)
        least = extent.right + kBeforeBarLine;
    if (!next)
        return std::max(least, extentWithSign(symbol).right + kLeastGap);
    if (symbol.endsBar)
        return least + kBehindBarLine + extentOf(*next).left;
    const bool nextLedger = !next->rest && engraving::ledgerLines(next->note.position) > 0;
    const bool sign = !next->rest && next->note.accidental != engraving::Accidental::None;
    if (sign)
        least += extentOf(*next).left;
    else if (ledger && nextLedger)
        least = std::max(least, head + 2 * glyph_table::kLedgerLineExtension + kLedgerGap);
    if (symbol.signWidth > 0 && next->signWidth > 0) {
        const double signs = (symbol.signWidth + next->signWidth) / 2 + kSignGap;
        least = std::max(least, signs + middleOf(symbol) - middleOf(*next));
    }
    return symbol.tiedToNext() ? std::max(least, kTieLength) : least;
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
