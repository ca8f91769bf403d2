#pragma once

#include "composer/melody/play_range.h"

#include <QObject>

class ComposerView;
class MelodyEditor;
class MelodyPresenter;
class QLineEdit;
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
    void announceChange(const PlayRange& before);
    void validate(QLineEdit& box, QString (MelodyEditor::*take)(const QString&));

    Ui::frmComposer& ui_;
    ComposerModel& model_;
    ComposerView& view_;
    MelodyPresenter& presenter_;
};
