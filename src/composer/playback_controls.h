#pragma once

#include "composer/melody/step_mode.h"

#include <QObject>

class ComposerKeyboard;
class ComposerMenu;
class ComposerView;
class Dialogs;
class MelodyPresenter;
struct ComposerModel;

namespace Ui {
class frmComposer;
}

/// The controls that play the melody: play and stop, loop, step by step, tempo and instrument.
class PlaybackControls : public QObject {
    Q_OBJECT

public:
    PlaybackControls(Dialogs& dialogs, Ui::frmComposer& ui, ComposerModel& model,
                     ComposerView& view, MelodyPresenter& presenter, ComposerKeyboard& keyboard,
                     ComposerMenu& menu);

private Q_SLOTS:
    void cmdPlay_Click();
    void chekLoop_Click();
    void lblStep_Click(StepMode::Direction direction);
    void Regolo_ChooseEntry(int entry);
    void Slider1_Change();
    void lblTempo_Typed(int quartersPerMinute);
    void lblNt_DblClick();
    void mnuPlayRitardo_Click();
    void mnuOrgano_Click();
    void mnuPiano_Click();

private:
    void takeTempo();

    Dialogs& dialogs_;
    Ui::frmComposer& ui_;
    ComposerModel& model_;
    ComposerView& view_;
    MelodyPresenter& presenter_;
    ComposerKeyboard& keyboard_;
};
