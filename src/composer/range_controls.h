#pragma once

#include "composer/melody/play_range.h"

#include <QObject>

class ComposerView;
class MelodyPresenter;
struct ComposerModel;

namespace Ui {
class frmComposer;
}

/// The controls of the range that is played, and the transposition beside them.
class RangeControls : public QObject {
    Q_OBJECT

public:
    RangeControls(Ui::frmComposer& ui, ComposerModel& model, ComposerView& view,
                  MelodyPresenter& presenter);

private Q_SLOTS:
    void lblid_MouseDown(PlayRange::Arrow arrow);
    void lblid_MouseUp();
    void lblid_Step(PlayRange::Arrow arrow);
    void lblNini_Validate();
    void lblNfine_Validate();
    void lblIDs_Click(int semitones);
    void lblSemitoni_Click();

private:
    Ui::frmComposer& ui_;
    ComposerModel& model_;
    ComposerView& view_;
    MelodyPresenter& presenter_;
};
