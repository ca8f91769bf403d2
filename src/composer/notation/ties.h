#pragma once

#include "composer/notation/symbol.h"

#include <vector>

/// The ties of a system: on which side of the heads, and from where to where.
namespace notation {

struct Tie {
    Span symbols;     ///< at its ends; one from or to another system has a single one
    double left = 0;  ///< in staff spaces, as a symbol's `x`
    double right = 0;
    engraving::TieCurve curve;
};

/// Room on the left of a system's first note for the tie that comes from the system before.
constexpr double kIncomingTieRoom = 1.4;

/// The ties of symbols that are placed, in a system that ends at `end`. `signs` are the symbols
/// with an articulation, in their order.
std::vector<Tie> layOutTies(const std::vector<Symbol>& symbols,
                            const std::vector<std::size_t>& signs, double end);

/// The positions that a tie covers.
engraving::Reach reachOf(const Tie& tie);

}  // namespace notation
