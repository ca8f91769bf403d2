#include "composer/notation/sheet_layout.h"

#include <algorithm>

namespace notation {
namespace {

constexpr double kBetween = 2;  ///< staff spaces, beside the room around each system

/// Moves the systems of a full page apart, so that the last one ends at its bottom.
void fill(SheetPage& page, double room) {
    if (page.tops.size() < 2)
        return;
    const double more = room / static_cast<double>(page.tops.size() - 1);
    for (std::size_t i = 0; i < page.tops.size(); ++i)
        page.tops[i] += more * static_cast<double>(i);
}

}  // namespace

bool usesBass(const ScoreLayout& score) {
    return std::any_of(score.systems().begin(), score.systems().end(), [](const System& system) {
        return std::any_of(system.symbols.begin(), system.symbols.end(),
                           [](const Symbol& symbol) { return symbol.staff == Staff::Bass; });
    });
}

double printedHeight(const System& system, bool withBass) {
    return (withBass ? system.height() : system.bottomLine(Staff::Treble) + system.gap) / 2;
}

std::vector<SheetPage> pagesOf(const ScoreLayout& score, double height, double titleRoom) {
    const bool bass = usesBass(score);
    std::vector<SheetPage> pages(1);
    double top = titleRoom;
    for (std::size_t i = 0; i < score.systems().size(); ++i) {
        const double needed = printedHeight(score.systems()[i], bass);
        if (top + needed > height && !pages.back().tops.empty()) {
            fill(pages.back(), height - (top - kBetween));
            pages.push_back({i, {}});
            top = 0;
        }
        pages.back().tops.push_back(top);
        top += needed + kBetween;
    }
    return pages;
}

}  // namespace notation
