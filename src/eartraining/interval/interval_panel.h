#pragma once

#include "eartraining/exercise_panel.h"

#include <array>
#include <memory>

class ColourButton;
class IntervalExercise;

namespace Ui {
class IntervalPanel;
}

/// The frame of the interval exercise: a chart with a column for each number of semitones, and the
/// exercise's controls.
class IntervalPanel : public ExercisePanel {
    Q_OBJECT

public:
    IntervalPanel(IntervalExercise& exercise, QWidget* parent);
    ~IntervalPanel() override;

    QWidget* answerControl(int answer) const override;

private:
    void buildNames();
    void buildButtons();
    void connectControls();
    void lblModo_Click();
    void Il_Click(int semitones);
    void Il_DblClick(int semitones);
    void showMode();
    void showAvailability();

    std::unique_ptr<Ui::IntervalPanel> ui_;
    IntervalExercise& interval_;
    std::array<ColourButton*, 14> semitones_{};  ///< `LblSemi`
    std::array<ColourButton*, 14> markers_{};    ///< `Il`
};
