#pragma once

#include "composer/exchange/imported_score.h"

#include <cstddef>

namespace imported {

/// No more bars are played, whatever the repeats say.
constexpr std::size_t kMostBarsPlayed = 200'000;

/// The bars in the order in which they are played, with repeats, endings, da capo, dal segno, coda
/// and fine written out. After a jump back repeats are not taken again, and of the endings the last
/// one is. Nothing if that would be more than `kMostBarsPlayed`.
std::optional<std::vector<std::size_t>> playOrder(const std::vector<Bar>& bars);

}  // namespace imported
