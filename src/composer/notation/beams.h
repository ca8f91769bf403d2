#pragma once

#include "composer/notation/symbol.h"

#include <vector>

/// The beams of a system: on which side of the heads, how steep, and of which lines.
namespace notation {

/// The beams that join some notes, one below the other.
struct Beam {
    /// One line. A part of a beam that only one note has is a stub to its left or right.
    struct Line {
        std::size_t first = 0;
        std::size_t last = 0;
        int level = 0;    ///< 0 is the one at the stems' ends
        double stub = 0;  ///< in staff spaces to the left (negative) or right of `first`

        bool operator==(const Line&) const = default;
    };

    Span notes;
    bool stemsUp = true;
    std::vector<Line> lines;
};

/// From one beam line to the next one, in half spaces.
constexpr double kBeamDistance = 2 * (glyph_table::kBeamThickness + glyph_table::kBeamSpacing);

/// Turns all stems of a beam to the side where the note that is farthest from the middle line has
/// its own.
void turnStems(std::vector<Symbol>& symbols, const Span& beam);

/// Ends the stems, which are turned and placed already, at one straight line, and makes the lines.
Beam layOutBeam(std::vector<Symbol>& symbols, const Span& beam);

}  // namespace notation
