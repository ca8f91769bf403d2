#include "composer/notation/ties.h"

#include <algorithm>

namespace notation {
namespace {

/// In staff spaces.
constexpr double kIncomingLength = 1.2;  ///< to the left of the head
constexpr double kBeforeEnd = 0.3;
constexpr double kShortest = 0.8;
constexpr double kBesideStem = 0.15;

/// In half spaces.
constexpr double kStroke = glyph_table::kTieMidpointThickness;

/// On the side away from the stem. One between two systems goes by the position alone, for under
/// different beams the stems of its notes may go different ways.
bool standsAbove(const Symbol& symbol, bool isBroken) {
    return isBroken ? symbol.note.position >= engraving::kMiddleLine
                    : !engraving::stemGoesUp(symbol.note);
}

struct Ends {
    const Symbol* first = nullptr;
    const Symbol* last = nullptr;
    double systemEnd = 0;
    bool hasSign = false;  ///< over the first head, or before the last one of a broken tie

    const Symbol& any() const { return first ? *first : *last; }
    bool isBroken() const { return !first || !last; }
};

bool hasAccidental(const Symbol& symbol) {
    return symbol.note.accidental != engraving::Accidental::None;
}

/// Of the head, or of the accidental before it.
double beginOf(const Symbol& symbol) {
    return hasAccidental(symbol) ? symbol.x - extentOf(symbol).left : symbol.x;
}

double leftOf(const Ends& ends, const engraving::TieCurve& curve) {
    return ends.first ? ends.first->x + curve.from : beginOf(*ends.last) - kIncomingLength;
}

double rightOf(const Ends& ends, const engraving::TieCurve& curve) {
    return ends.last ? beginOf(*ends.last) + curve.to : ends.systemEnd - kBeforeEnd;
}

Tie layOutTie(const Ends& ends) {
    const engraving::Note& note = ends.any().note;
    const bool above = standsAbove(ends.any(), ends.isBroken());
    const bool isOnLine = note.position % 2 == 0;
    const bool underDots = ends.first && note.dots > 0 && above;
    Tie tie;
    if (ends.hasSign || (isOnLine && !underDots)) {
        tie.curve = engraving::tieBetweenHeads(note, above);
        tie.left = leftOf(ends, tie.curve);
        tie.right = rightOf(ends, tie.curve);
        if (ends.hasSign || tie.right - tie.left >= kShortest)
            return tie;
    }
    tie.curve = engraving::tieOverHeads(note, above);
    tie.left = leftOf(ends, tie.curve);
    tie.right = rightOf(ends, tie.curve);
    // A stem on the side of the tie is on the right of the first head, or on the left of the last.
    if (ends.first && above && engraving::stemGoesUp(ends.first->note))
        tie.left = ends.first->x + engraving::headWidth(note.duration) + kBesideStem;
    if (ends.last && !above && !engraving::stemGoesUp(ends.last->note))
        tie.right = ends.last->x - kBesideStem;
    return tie;
}

}  // namespace

std::vector<Tie> layOutTies(const std::vector<Symbol>& symbols,
                            const std::vector<std::size_t>& signs, double end) {
    std::vector<Tie> ties;
    if (symbols.empty())
        return ties;
    if (!symbols.front().opensEntry && !symbols.front().rest)
        ties.push_back(layOutTie({nullptr, &symbols.front(), end, hasAccidental(symbols.front())}));
    auto sign = signs.begin();
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        sign = std::find_if(sign, signs.end(), [i](std::size_t symbol) { return symbol >= i; });
        const Symbol& symbol = symbols[i];
        if (!symbol.tiedToNext())
            continue;
        const bool isLast = i + 1 == symbols.size();
        const bool away = standsAbove(symbol, isLast) != engraving::stemGoesUp(symbol.note);
        ties.push_back(layOutTie({&symbol, isLast ? nullptr : &symbols[i + 1], end,
                                  away && sign != signs.end() && *sign == i}));
        ties.back().symbols = {i, isLast ? i : i + 1};
    }
    return ties;
}

engraving::Reach reachOf(const Tie& tie) {
    return {std::min(tie.curve.ends, tie.curve.middle - kStroke),
            std::max(tie.curve.ends, tie.curve.middle + kStroke)};
}

}  // namespace notation
