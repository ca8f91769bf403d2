#include "eartraining/chord/chord_panel.h"
#include "eartraining/exercise_panel.h"
#include "eartraining/exercises.h"
#include "eartraining/interval/interval_panel.h"
#include "eartraining/pitch/pitch_panel.h"

std::vector<ExercisePanel*> makePanels(Exercises& exercises, QWidget* parent) {
    return {
        new PitchPanel(exercises.pitch, parent),
        new IntervalPanel(exercises.interval, parent),
        new ChordPanel(exercises.chord, parent),
    };
}
