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
    if (view_)
        view_->focusStart();
}

void EarExercise::changed() {
    if (view_)
        view_->showState();
}
