#include "composer/entry_controls.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_view.h"
#include "composer/melody_presenter.h"
#include "core/pitch.h"
#include "platform/runtime.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_modify_panel.h"

#include <QApplication>
#include <QPointer>

#include <utility>

EntryControls::EntryControls(Ui::frmComposer& ui, Runtime& runtime, ComposerModel& model,
                             ComposerView& view, MelodyPresenter& presenter,
                             ComposerKeyboard& keyboard, ComposerMenu& menu)
    : ui_(ui),
      runtime_(runtime),
      model_(model),
      view_(view),
      presenter_(presenter),
      keyboard_(keyboard),
      entryMenu_(menu.bar()) {
    connectPalette();
    connectMenu();
    connectEditFrame();
    connect(&menu, &ComposerMenu::undoChosen, this, &EntryControls::mnuAnnulla_Click);
    connect(&menu, &ComposerMenu::redoChosen, this, &EntryControls::mnuRipeti_Click);
    connect(ui_.lb, &PianoKeyboard::keyDoubleClick, this, &EntryControls::lb_DblClick);
}

void EntryControls::connectPalette() {
    EntryPalettePanel& panel = *ui_.palette;
    auto& palette = panel.ui();
    connect(&panel, &EntryPalettePanel::symbolClicked, this, &EntryControls::cmdSimbNote_Click);
    connect(&panel, &EntryPalettePanel::attributeClicked, this, &EntryControls::cmdAttrNota_Click);
    connect(palette.ckConsAtt, &QCheckBox::clicked, this, &EntryControls::ckConsAtt_Click);
    connect(palette.lblActNote, &QToolButton::clicked, this, &EntryControls::lblActNote_DblClick);
    connect(palette.cmdInsNota, &QPushButton::clicked, this, &EntryControls::cmdInsNota_Click);
    connect(palette.cmdInsPausa, &QPushButton::clicked, this, &EntryControls::cmdInsPausa_Click);
    connect(palette.cmdCanc, &QPushButton::clicked, this, &EntryControls::cmdCanc_Click);
    connect(palette.cmdReset, &QPushButton::clicked, this, &EntryControls::cmdReset_Click);
}

/// A menu item is a click on its button, which may be disabled.
void EntryControls::connectMenu() {
    auto& palette = ui_.palette->ui();
    const auto on = [this](auto signal, auto act) {
        connect(&entryMenu_, signal, this, [this, act] { afterKeys(act); });
    };
    on(&EntryMenu::noteChosen, [&palette] { palette.cmdInsNota->click(); });
    on(&EntryMenu::restChosen, [&palette] { palette.cmdInsPausa->click(); });
    on(&EntryMenu::deletionChosen, [this] { mnuCanc_Click(); });
    on(&EntryMenu::repetitionChosen, [this] { cmdDuplica_Click(); });
    connect(&entryMenu_, &EntryMenu::symbolChosen, this,
            [this](std::uint8_t index) { afterKeys([=, this] { cmdSimbNote_Click(index); }); });
    connect(&entryMenu_, &EntryMenu::attributeChosen, this,
            [this](std::uint8_t index) { afterKeys([=, this] { cmdAttrNota_Click(index); }); });
}

/// A shortcut is looked for at once, but the keys that are polled have their turn one by one: a
/// step takes as long as its note. The user means what he typed before to be done before.
void EntryControls::afterKeys(const std::function<void()>& act) {
    runtime_.afterKeys([self = QPointer(this), act] {
        const QWidget* box = QApplication::activeModalWidget();
        if (self && (!box || box == self->ui_.lb->window()))
            act();
    });
}

void EntryControls::connectEditFrame() {
    auto& frame = ui_.frmModifica->ui();
    connect(frame.cmdModifica_0, &QPushButton::clicked, this, &EntryControls::cmdModifica_Click);
    connect(frame.cmdInsertNote, &QPushButton::clicked, this, &EntryControls::cmdInsertNote_Click);
    connect(frame.cmdCancNota, &QPushButton::clicked, this, &EntryControls::cmdCancNota_Click);
    connect(frame.cmdDuplica, &QPushButton::clicked, this, &EntryControls::cmdDuplica_Click);
}

void EntryControls::cmdSimbNote_Click(std::uint8_t index) {
    ui_.palette->ui().cmdInsNota->setFocus();
    model_.composition.settings.chooseSymbol(index);
    view_.speech().settings();
    view_.showSettings();
}

void EntryControls::cmdAttrNota_Click(std::uint8_t index) {
    model_.composition.settings.clickAttribute(index);
    view_.speech().settings();
    view_.showSettings();
}

void EntryControls::ckConsAtt_Click() {
    model_.composition.settings.setKeepsAttributes(ui_.palette->ui().ckConsAtt->isChecked());
}

void EntryControls::lb_DblClick() {
    cmdInsNota_Click();
    view_.focusPlay();
}

void EntryControls::lblActNote_DblClick() {
    keyboard_.cycleOctave();
}

/// A key that is held on the piano by the computer keyboard would end with the piano's focus.
void EntryControls::cmdInsNota_Click() {
    if (!pitch::isPlayable(model_.composition.activeNote))
        return;
    if (!ui_.lb->playsWithFocus())
        view_.focusPlay();
    const EditOutcome outcome = model_.editor.insertNote();
    // A tie may have replaced the entry of the edit frame.
    if (model_.composition.step.frameOpen && !model_.playback.player().playing())
        model_.playback.showStepPlace();
    presenter_.present(outcome);
}

void EntryControls::cmdInsPausa_Click() {
    ui_.palette->showActiveNote(pitch::NoteName(pitch::kRest));
    presenter_.present(model_.editor.insertRest());
}

void EntryControls::cmdCanc_Click() {
    if (model_.composition.melody.EntryCount() == 1) {
        cmdReset_Click();
        return;
    }
    ui_.palette->ui().cmdInsNota->setFocus();
    const EditOutcome outcome = model_.editor.deleteLast();
    if (outcome.stepEntryGone)
        model_.playback.followStep(true);
    presenter_.present(outcome);
}

void EntryControls::cmdReset_Click() {
    model_.playback.stop();
    presenter_.present(model_.editor.reset());
    ui_.palette->ui().cmdInsNota->setFocus();
}

void EntryControls::cmdModifica_Click() {
    const EditOutcome outcome = model_.editor.modify(ui_.frmModifica->choice());
    if (outcome.changed)
        view_.showStepIndex();
    presenter_.present(outcome);
    if (outcome.changed)
        model_.playback.playStepEntry();
}

void EntryControls::cmdInsertNote_Click() {
    presentAtStep(model_.editor.insertAfter(ui_.frmModifica->choice()));
}

void EntryControls::cmdCancNota_Click() {
    if (model_.composition.melody.EntryCount() == 1) {
        cmdReset_Click();
        return;
    }
    presentAtStep(model_.editor.deleteAtStep());
}

/// The user goes on writing behind the copy.
void EntryControls::cmdDuplica_Click() {
    const EditOutcome outcome = model_.editor.repeatFromStep();
    if (outcome.changed) {
        model_.playback.leaveStep();
        model_.playback.showStepPlace();
        view_.focusPlay();
    }
    presenter_.present(outcome);
}

/// The note of the edit frame, or the last one.
void EntryControls::mnuCanc_Click() {
    if (model_.composition.step.frameOpen)
        ui_.frmModifica->ui().cmdCancNota->click();
    else
        ui_.palette->ui().cmdCanc->click();
}

void EntryControls::mnuAnnulla_Click() {
    if (!model_.playback.player().playing())
        presentRestored(model_.editor.undo(), &ComposerSpeech::undone);
}

void EntryControls::mnuRipeti_Click() {
    if (!model_.playback.player().playing())
        presentRestored(model_.editor.redo(), &ComposerSpeech::redone);
}

/// Shows an insertion or a deletion at the step index: the edit frame names the note that is there
/// now, but keeps its choices for the next one.
void EntryControls::presentAtStep(const EditOutcome& outcome) {
    if (outcome.changed) {
        view_.showStepIndex();
        model_.playback.showStepPlace();
    }
    presenter_.present(outcome);
}

/// Shows what undo or redo brought back.
void EntryControls::presentRestored(const EditOutcome& outcome, void (ComposerSpeech::*say)()) {
    presenter_.presentTempoAndInstrument();
    model_.playback.followStep(outcome.stepEntryGone);
    presenter_.show(outcome);
    (view_.speech().*say)();
}
