#pragma once

#include <QString>

struct ScoreHeading;

namespace score {
struct BarView;
}

/// Braille music after the international manual, a melody bar by bar.
namespace braille {

constexpr int kCellsPerLine = 40;
constexpr int kLinesPerPage = 25;

/// Unicode cells, in lines that end with LF; a form feed begins each further page.
QString write(const score::BarView& view, const ScoreHeading& heading);

}  // namespace braille
