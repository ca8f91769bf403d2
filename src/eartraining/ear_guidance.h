#pragma once

#include "eartraining/key_span.h"

#include <optional>

class EarExercise;
class EarTrainingView;
class OpenOutput;

/// What the window shows beside the instruction of an exercise: a second line where the instruction
/// leaves a question open, the chosen range, and whether the question can be heard again.
class EarGuidance {
public:
    EarGuidance(const OpenOutput& output, EarTrainingView& view) : output_(output), view_(view) {}

    /// To be called whenever something may have changed; the view is told of what has. `asking` is
    /// the exercise that runs or would be started, `keyboardUser` the one whose range is chosen.
    void refresh(const EarExercise& asking, const EarExercise& keyboardUser);

private:
    const OpenOutput& output_;
    EarTrainingView& view_;
    const char* hint_ = nullptr;
    std::optional<KeySpan> span_;
    std::optional<bool> canHearAgain_;
};
