#pragma once

#include "composer/notation/system_layout.h"

#include <vector>

/// What the signs of a system cover.
namespace notation {

/// A stretch of a staff, in staff spaces, and how far ink reaches there.
struct Ink {
    Staff staff;
    double left;
    double right;
    engraving::Reach reach;

    bool isAt(double from, double to) const { return right > from && left < to; }
    double over() const { return reach.high - engraving::kTopLine; }
    double under() const { return -reach.low; }
};

Ink inkOf(const System& system, const DurationSign& sign);

/// Of all that is placed.
std::vector<Ink> inksOf(const System& system);

/// Of all ink on a staff between two places along it, and of the stave itself.
engraving::Reach reachBetween(const std::vector<Ink>& inks, Staff staff, double left, double right);

}  // namespace notation
