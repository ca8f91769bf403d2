#pragma once

#include "reading/difficulty.h"

#include <optional>

/// The range of steps from which the drill draws, and the two clicks on the ruler that can set it.
class StepRangeChoice {
public:
    difficulty::StepRange range() const { return range_; }

    /// Whether a session can be started: not between the two clicks of a range being chosen.
    bool startAllowed() const { return startAllowed_; }

    /// Takes the range of a difficulty item and forgets the clicks.
    void chooseItem(std::size_t index);

    /// Forgets the clicks and keeps the range.
    void forgetClicks();

    /// Whether a click on the ruler does anything: not when both bounds are chosen.
    bool acceptsClicks() const { return first_ == 0 || second_ == 0; }

    /// Whether the next click would be the first of a new range.
    bool nothingChosen() const { return first_ == second_; }

    /// Takes a click at `y` twips from the ruler's top; the caller has asked `acceptsClicks`. From
    /// the first click on no session can be started until both bounds are chosen. Answers with the
    /// step that was hit; nothing between two bands.
    std::optional<int> click(double y);

    /// The range as a sentence for the user, or what is missing to choose one.
    QString inWords(pitch::AnswerNames names) const;

private:
    difficulty::StepRange range_ = *difficulty::kItems.front().range;
    int first_ = 0;
    int second_ = 0;
    bool startAllowed_ = true;
};
