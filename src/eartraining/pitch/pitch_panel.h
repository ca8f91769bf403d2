#pragma once

#include "eartraining/exercise_panel.h"

#include <memory>

class PitchExercise;

namespace Ui {
class PitchPanel;
}

/// The controls of the pitch exercise; its answers come from the keyboard.
class PitchPanel : public ExercisePanel {
    Q_OBJECT

public:
    PitchPanel(PitchExercise& exercise, QWidget* parent);
    ~PitchPanel() override;

    QWidget* answerControl(int /*answer*/) const override { return nullptr; }

private:
    void showState() override;
    void lblMod_Click();
    void showMode();

    std::unique_ptr<Ui::PitchPanel> ui_;
    PitchExercise& pitch_;
};
