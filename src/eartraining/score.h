#pragma once

#include "core/verdict.h"
#include "eartraining/ear_colours.h"

#include <QString>

#include <optional>

/// The answers of an exercise so far, as the window shows them.
class Score {
public:
    /// Back to zero; the last verdict and the counters' colours stay.
    void reset();
    void count(Verdict verdict);
    /// Gives the verdict's counter its other colour, so that repeated answers can be seen.
    void alternateColour(Verdict verdict);

    int right() const { return right_; }
    int wrong() const { return wrong_; }
    Verdict lastVerdict() const { return lastVerdict_; }

    /// "0" until an answer is counted, then as "75.00%".
    QString percentage() const;

    /// Nothing until the counter's first change of colour.
    std::optional<ear_colours::Rgb> rightColour() const;
    std::optional<ear_colours::Rgb> wrongColour() const;

private:
    int right_ = 0;
    int wrong_ = 0;
    Verdict lastVerdict_ = Verdict::None;
    int rightChanges_ = 0;
    int wrongChanges_ = 0;
};
