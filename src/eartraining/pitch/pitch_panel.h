#pragma once

#include <QGroupBox>

#include <memory>

class PitchExercise;

namespace Ui {
class PitchPanel;
}

/// The controls of the pitch exercise; its answers come from the keyboard.
class PitchPanel : public QGroupBox {
public:
    explicit PitchPanel(QWidget* parent = nullptr);
    ~PitchPanel() override;

    Ui::PitchPanel& ui() { return *ui_; }
    void attach(PitchExercise& exercise);

    /// Whether a button of the exercise is to be seen.
    bool hasButtons() const;

private:
    void lblMod_Click();
    void showMode();

    std::unique_ptr<Ui::PitchPanel> ui_;
    PitchExercise* exercise_ = nullptr;
};
