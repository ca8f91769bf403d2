#pragma once

#include "eartraining/ear_training.h"
#include "eartraining/ear_training_view.h"

#include <QDialog>

#include <memory>

struct EarTrainingState;
struct Services;
class InstrumentFrame;
class QMenu;
class QPushButton;

namespace Ui {
class frmInto;
}

/// The ear-training window: a prompt and a score, the exercise that was chosen, and the piano
/// keyboard that serves all three. It cannot be closed while an exercise runs.
class frmInto : public QDialog, private EarTrainingView {
public:
    frmInto(const Services& services, EarTrainingState& state, QWidget* parent);
    ~frmInto() override;

    void mnuNota_Click();
    void mnuRint_Click();
    void mnuRicTa_Click();

    /// Stays open as long as the ear training refuses to end.
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Form_Activate();
    void buildMenus();
    void connectControls();
    QWidget& widgetOf(EarControl control);
    QPushButton& startButtonOf(EarExercise exercise);
    void showContext(EarExercise exercise);
    void arrangePitchPanel();

    void showPrompt(EarPrompt prompt) override;
    void showScore(const Score& score) override;
    void announceVerdict(const Score& score) override;
    void showKey(pitch::NoteIndex key, bool pressed) override;
    void showRangeMark(pitch::NoteIndex key, bool on) override;
    void clearRangeMarks() override;
    void showControl(EarControl control, bool on) override;
    void focusIntoStart() override;
    void enableExerciseMenu(bool on) override;
    void showRunning(EarExercise exercise, bool running) override;

    std::unique_ptr<Ui::frmInto> ui_;
    EarTraining ear_;
    QMenu* exercises_ = nullptr;  ///< `Esercizio`
    bool activated_ = false;
};
