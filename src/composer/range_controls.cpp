#include "composer/range_controls.h"

#include "composer/composer_model.h"
#include "composer/composer_view.h"
#include "composer/melody_presenter.h"
#include "ui_frmComposer.h"
#include "ui_range_panel.h"

RangeControls::RangeControls(Ui::frmComposer& ui, ComposerModel& model, ComposerView& view,
                             MelodyPresenter& presenter)
    : ui_(ui), model_(model), view_(view), presenter_(presenter) {
    RangePanel& panel = *ui_.range;
    auto& range = panel.ui();
    connect(&panel, &RangePanel::arrowDown, this, &RangeControls::lblid_MouseDown);
    connect(&panel, &RangePanel::arrowUp, this, &RangeControls::lblid_MouseUp);
    connect(&panel, &RangePanel::arrowStepped, this, &RangeControls::lblid_Step);
    connect(range.lblNini, &QLineEdit::editingFinished, this, &RangeControls::lblNini_Validate);
    connect(range.lblNfine, &QLineEdit::editingFinished, this, &RangeControls::lblNfine_Validate);
    for (QLineEdit* box : {range.lblNini, range.lblNfine})
        connect(box, &QLineEdit::returnPressed, this, [this] { view_.focusPlay(); });
    connect(range.lblIDs_0, &QToolButton::clicked, this, [this] { lblIDs_Click(-1); });
    connect(range.lblIDs_1, &QToolButton::clicked, this, [this] { lblIDs_Click(1); });
    connect(range.lblSemitoni, &QToolButton::clicked, this, &RangeControls::lblSemitoni_Click);
}

/// Returns when the arrow was released.
void RangeControls::lblid_MouseDown(PlayRange::Arrow arrow) {
    const PlayRange before = model_.composition.range;
    model_.arrows.hold(arrow);
    announceChange(before);
}

void RangeControls::lblid_MouseUp() {
    model_.arrows.release();
    view_.focusPlay();
}

void RangeControls::lblid_Step(PlayRange::Arrow arrow) {
    const PlayRange before = model_.composition.range;
    model_.arrows.step(arrow);
    announceChange(before);
}

void RangeControls::announceChange(const PlayRange& before) {
    if (model_.composition.range != before)
        view_.speech().range();
}

/// What was typed and refused is a change too, of the box. An empty melody has no range.
void RangeControls::validate(QLineEdit& box, QString (MelodyEditor::*take)(const QString&)) {
    const PlayRange before = model_.composition.range;
    const QString typed = box.text();
    box.setText((model_.editor.*take)(typed));
    const bool refused = box.text() != typed && !model_.composition.melody.empty();
    if (refused || model_.composition.range != before)
        view_.speech().range();
}

void RangeControls::lblNini_Validate() {
    const StepMode& step = model_.composition.step;
    const std::int16_t index = step.index;
    validate(*ui_.range->ui().lblNini, &MelodyEditor::validateStart);
    if (step.frameOpen && step.index != index) {
        view_.showStepIndex();
        model_.playback.showStepPlace();
    }
    view_.showRangeMarks();
    view_.showCurrentEntry();
}

void RangeControls::lblNfine_Validate() {
    validate(*ui_.range->ui().lblNfine, &MelodyEditor::validateEnd);
    view_.showRangeMarks();
    view_.showCurrentEntry();
}

void RangeControls::lblIDs_Click(int semitones) {
    model_.editor.changeTransposition(semitones);
    ui_.range->showTransposition(model_.composition.transposition,
                                 model_.editor.transpositionHint());
    view_.speech().transposition();
}

void RangeControls::lblSemitoni_Click() {
    const EditOutcome outcome = model_.editor.transpose();
    presenter_.show(outcome);
    if (outcome.changed)
        view_.speech().transposed();
    view_.focusPlay();
}
