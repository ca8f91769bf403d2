#pragma once

#include "core/midi_keyboard.h"
#include "eartraining/ear_speech.h"
#include "eartraining/ear_training.h"
#include "eartraining/ear_training_view.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <vector>

class EarTrainingState;
class ExercisePanel;
class KeyboardSpan;
class QMenu;
class VerdictBadge;
struct Services;

namespace Ui {
class frmInto;
}

/// The ear-training window: a prompt and a score, the chosen exercise, and the piano keyboard of
/// all exercises. It cannot be closed while an exercise runs. F2 announces the score, F3 the
/// prompt; Ctrl+Return starts and stops from wherever the focus is.
class frmInto : public QDialog, private EarTrainingView, private MidiKeysListener {
    Q_OBJECT

public:
    frmInto(const Services& services, EarTrainingState& state, QWidget* parent);
    ~frmInto() override;

    /// Refused as long as `EarTraining::unload` refuses.
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Form_Activate();
    void addPanels();
    void buildMenus();
    void connectControls();
    void addKeys();
    void orderTabs();
    void choose(EarExercise& exercise);
    void chooseInstrument(int program);
    void mnuSs_Click();
    void placeVerdict();
    void announceHint();
    ExercisePanel& panelOf(const EarExercise& exercise) const;
    void showContext(ExerciseCode exercise);

    void keyDown(int note) override;
    void keyUp(int note) override;

    void showPrompt(const EarPrompt& prompt) override;
    void showHint(const char* hint) override;
    void showScore(const Score& score) override;
    void announceVerdict(const Score& score) override;
    void showVerdict(const EarExercise& exercise, int answer, Verdict verdict) override;
    void hideVerdict() override;
    void showExercise(const EarExercise& exercise) override;
    void focusStart(const EarExercise& exercise) override;
    void showKey(pitch::NoteIndex key, bool pressed) override;
    void showRangeMark(pitch::NoteIndex key, bool on) override;
    void clearRangeMarks() override;
    void showSpan(const std::optional<KeySpan>& span) override;
    void enableHearAgain(bool on) override;
    void showClose(bool on) override;
    void enableExerciseMenu(bool on) override;

    std::unique_ptr<Ui::frmInto> ui_;
    FunzioniMM& funzioniMM_;
    KeyboardSpan* span_ = nullptr;
    VerdictBadge* verdict_;
    int judged_ = 0;  ///< the answer that it was shown for
    EarSpeech speech_;
    QString scoreInWords_;
    QTimer hintSpeech_;  ///< when an act is over: on the way the hint may change more than once
    EarTraining ear_;
    MidiKeyboard::Window keys_;
    std::vector<ExercisePanel*> panels_;
    QMenu* exercises_ = nullptr;  ///< `Esercizio`
    bool activated_ = false;
};
