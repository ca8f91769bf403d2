#pragma once

#include "composer/score/bar_view.h"

#include <optional>
#include <vector>

namespace score {

/// Divides entries, one after the other, at the bar lines of a metre, into values that can be
/// written. Begins at a bar line.
class BarDivider {
public:
    /// Without a metre there is one bar.
    explicit BarDivider(const std::optional<Metre>& metre);

    /// Whether values give so many units from here on, and each part that a bar line leaves.
    bool canWrite(int units) const;

    /// Writes as much of an entry as the bar holds, in a new bar if the last one is full; what no
    /// values give is left out. Answers the units that remain, for which the note is then made
    /// ready: they are to be appended next.
    int append(WrittenNote& note, int units);

    bool barIsFull() const { return !bars_.empty() && position_ == barUnits_; }
    std::vector<Bar> takeBars() { return std::move(bars_); }

private:
    int barUnits_;
    int position_ = 0;  ///< in the last bar
    std::vector<Bar> bars_;
};

/// Marks the triplets of a bar that is divided, and spells its notes.
void finishBar(Bar& bar, const Notation& notation);

}  // namespace score
