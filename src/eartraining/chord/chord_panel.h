#pragma once

#include "eartraining/exercise_panel.h"

#include <array>
#include <memory>

class ChordExercise;
class ColourButton;

namespace Ui {
class ChordPanel;
}

/// The frame of the chord exercise: an answer button and a marker for each type, and the
/// exercise's controls.
class ChordPanel : public ExercisePanel {
    Q_OBJECT

public:
    ChordPanel(ChordExercise& exercise, QWidget* parent);
    ~ChordPanel() override;

    QWidget* answerControl(int answer) const override;

private:
    void showState() override;
    void buildTypes();
    void connectControls();
    void EsclTa_Click(int type);
    void lblVt_Click();
    void showMode();
    void showAvailability(int type);

    std::unique_ptr<Ui::ChordPanel> ui_;
    ChordExercise& chord_;
    std::array<ColourButton*, 4> types_{};    ///< `TipoAcc`
    std::array<ColourButton*, 4> markers_{};  ///< `EsclTa`
};
