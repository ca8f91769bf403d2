#include "composer/melody_presenter.h"

#include "composer/composer_keyboard.h"
#include "composer/composer_menu.h"
#include "composer/composer_model.h"
#include "composer/composer_view.h"
#include "composer/panels/bookmark_panel.h"
#include "composer/side_panels.h"
#include "core/funzioni_mm.h"
#include "platform/dialogs.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"

namespace {

constexpr int kCharactersShown = 40;

}  // namespace

MelodyPresenter::MelodyPresenter(const Services& services, Ui::frmComposer& ui, SidePanels& side,
                                 ComposerView& view, ComposerModel& model, ComposerMenu& menu,
                                 ComposerKeyboard& keyboard)
    : services_(services),
      ui_(ui),
      side_(side),
      view_(view),
      model_(model),
      menu_(menu),
      keyboard_(keyboard) {
    connect(&view, &ComposerView::playingShown, this, &MelodyPresenter::showUndo);
}

void MelodyPresenter::present(const EditOutcome& outcome) {
    show(outcome);
    if (outcome.changed)
        view_.speech().changed();
}

void MelodyPresenter::show(const EditOutcome& outcome) {
    if (!outcome.message.isEmpty()) {
        keyboard_.releaseHeldKeys();
        services_.dialogs.message(outcome.message);
        Q_EMIT messageClosed();
    }
    if (outcome.emptied) {
        model_.playback.player().silenceAll();
        auto& palette = ui_.palette->ui();
        for (QPushButton* button : {palette.cmdInsNota, palette.cmdInsPausa, palette.cmdCanc})
            button->setEnabled(true);
        view_.showEntryNumber({});
        view_.showEntryName({});
        side_.showEditFrame(false);
    }
    showMelody();
}

void MelodyPresenter::presentTempoAndInstrument() {
    const Composition& composition = model_.composition;
    ui_.playback->showTempo(composition.tempo);
    if (composition.instrument != services_.funzioniMM.currentInstrument())
        chooseInstrument(composition.instrument);
    ui_.instrument->showProgram(composition.instrument);
}

void MelodyPresenter::showMelody() {
    model_.unsaved.changed();
    const Composition& composition = model_.composition;
    const Melody& melody = composition.melody;
    ui_.lblNoteString->setText(melody.lastNames(kCharactersShown));
    ui_.lblNome->setText(composition.name);
    const QString count = melody.empty() ? QString() : QString::number(melody.EntryCount());
    ui_.lblNt->setText(count);
    ui_.lblNt->setAccessibleDescription(count);
    ui_.range->showTransposition(composition.transposition, model_.editor.transpositionHint());
    side_.bookmarks().showBookmarks(composition.bookmarks.items());
    side_.showHint(melody.empty());
    showUndo();
    menu_.enableExport(model_.exporter.canExportAudio(), model_.exporter.canExportMidi());
    view_.showEntries();
    view_.showSettings();
    view_.showRange();
    view_.showCurrentEntry();
}

bool MelodyPresenter::reportIfDamaged() {
    if (model_.composition.melody.consistent())
        return false;
    keyboard_.releaseHeldKeys();
    services_.dialogs.message(damagedMelodyText());
    return true;
}

void MelodyPresenter::chooseInstrument(int program) {
    model_.composition.instrument = program;
    model_.unsaved.changed();
    services_.funzioniMM.chooseInstrument(program);
    ui_.instrument->showProgram(program);
}

void MelodyPresenter::showUndo() {
    const bool idle = !model_.playback.player().playing();
    menu_.enableUndo(idle && model_.editor.canUndo(), idle && model_.editor.canRedo());
}
