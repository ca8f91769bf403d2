#include "eartraining/ear_exercise.h"

#include "eartraining/exercise_context.h"

void EarExercise::setChosen(bool chosen) {
    chosen_ = chosen;
    changed();
}

void EarExercise::setRunning(bool running) {
    running_ = running;
    changed();
    if (running)
        context_.exerciseStarted();
    else
        context_.exerciseStopped();
}

void EarExercise::setStartVisible(bool visible) {
    startVisible_ = visible;
    changed();
}

void EarExercise::focusStart() {
    context_.focusStart(*this);
}

void EarExercise::changed() {
    context_.showExercise(*this);
}
