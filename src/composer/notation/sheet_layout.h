#pragma once

#include "composer/notation/score_layout.h"

#include <vector>

namespace notation {

/// The systems of one printed page. Lengths are in staff spaces from the top of the page's room.
struct SheetPage {
    std::size_t first = 0;  ///< as the layout counts its systems
    std::vector<double> tops;
};

/// Whether any symbol stands on the bass staff; a sheet without one prints the treble staff alone.
bool usesBass(const ScoreLayout& score);

/// From a system's top to its lowest ink.
double printedHeight(const System& system, bool withBass);

/// Shares out all systems of a layout that is complete. On the first page they begin below the
/// title; a page holds at least one, and those of each page but the last fill it.
std::vector<SheetPage> pagesOf(const ScoreLayout& score, double height, double titleRoom);

}  // namespace notation
