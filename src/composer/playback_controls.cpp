#include "composer/playback_controls.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_view.h"
#include "composer/melody_presenter.h"
#include "core/instruments.h"
#include "platform/dialogs.h"
#include "ui_frmComposer.h"
#include "ui_playback_panel.h"

#include <QSignalBlocker>

PlaybackControls::PlaybackControls(Dialogs& dialogs, Ui::frmComposer& ui, ComposerModel& model,
                                   ComposerView& view, MelodyPresenter& presenter,
                                   ComposerKeyboard& keyboard, ComposerMenu& menu)
    : dialogs_(dialogs),
      ui_(ui),
      model_(model),
      view_(view),
      presenter_(presenter),
      keyboard_(keyboard) {
    auto& playback = ui_.playback->ui();
    connect(playback.cmdPlay, &QPushButton::clicked, this, &PlaybackControls::cmdPlay_Click);
    connect(playback.chekLoop, &QCheckBox::clicked, this, &PlaybackControls::chekLoop_Click);
    connect(playback.lblStep_0, &QToolButton::clicked, this,
            [this] { lblStep_Click(StepMode::Direction::Backward); });
    connect(playback.lblStep_1, &QToolButton::clicked, this,
            [this] { lblStep_Click(StepMode::Direction::Forward); });
    connect(&keyboard_, &ComposerKeyboard::stepRequested, this, &PlaybackControls::lblStep_Click);
    connect(ui_.Regolo, &ComposerStaff::entryChosen, this, &PlaybackControls::Regolo_ChooseEntry);
    connect(playback.Slider1, &QScrollBar::valueChanged, this, &PlaybackControls::Slider1_Change);
    connect(playback.lblTempo, &NumberLabel::numberTyped, this, &PlaybackControls::lblTempo_Typed);
    connect(playback.lblTempo, &NumberLabel::lineClosed, this, [this] { view_.focusPlay(); });
    connect(ui_.lblNt, &QToolButton::clicked, this, &PlaybackControls::lblNt_DblClick);
    connect(ui_.instrument, &InstrumentPanel::programChosen, &presenter_,
            &MelodyPresenter::chooseInstrument);
    connect(&menu, &ComposerMenu::delayedPlayChosen, this, &PlaybackControls::mnuPlayRitardo_Click);
    connect(&menu, &ComposerMenu::organChosen, this, &PlaybackControls::mnuOrgano_Click);
    connect(&menu, &ComposerMenu::pianoChosen, this, &PlaybackControls::mnuPiano_Click);
}

void PlaybackControls::cmdPlay_Click() {
    if (presenter_.reportIfDamaged())
        return;
    model_.playback.clickPlay();
}

void PlaybackControls::chekLoop_Click() {
    model_.playback.player().setLoops(ui_.playback->ui().chekLoop->isChecked());
    view_.focusPlay();
}

void PlaybackControls::lblStep_Click(StepMode::Direction direction) {
    if (presenter_.reportIfDamaged())
        return;
    const QString message = model_.playback.step(direction);
    view_.showCurrentEntry();
    if (message.isEmpty())
        return;
    keyboard_.releaseHeldKeys();
    dialogs_.message(message);
}

void PlaybackControls::Regolo_ChooseEntry(int entry) {
    model_.playback.stepTo(entry);
    view_.showCurrentEntry();
}

/// The mouse leaves the focus where it was; only a user who went to the bar with Tab stays on it.
void PlaybackControls::Slider1_Change() {
    takeTempo();
    if (!ui_.playback->ui().Slider1->hasFocus())
        view_.focusPlay();
}

/// A click on another control may have ended the typing: the focus goes there.
void PlaybackControls::lblTempo_Typed(int quartersPerMinute) {
    QScrollBar& bar = *ui_.playback->ui().Slider1;
    const QSignalBlocker silent(bar);
    bar.setValue(quartersPerMinute);
    takeTempo();
}

void PlaybackControls::takeTempo() {
    model_.composition.tempo = ui_.playback->ui().Slider1->value();
    model_.unsaved.changed();
    ui_.playback->showTempo(model_.composition.tempo);
}

void PlaybackControls::lblNt_DblClick() {
    model_.playback.player().toggleKeepLastNumber();
}

void PlaybackControls::mnuPlayRitardo_Click() {
    if (presenter_.reportIfDamaged())
        return;
    model_.playback.clickDelayedPlay();
}

void PlaybackControls::mnuOrgano_Click() {
    presenter_.chooseInstrument(instruments::kOrgano);
}

void PlaybackControls::mnuPiano_Click() {
    presenter_.chooseInstrument(instruments::kPianoforte);
}
