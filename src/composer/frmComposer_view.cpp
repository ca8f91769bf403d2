// What the window shows of the composition and of what plays.

#include "composer/frmComposer.h"
#include "composer/panels/bookmark_panel.h"
#include "composer/panels/browser_panel.h"
#include "core/funzioni_mm.h"
#include "core/pitch.h"
#include "platform/dialogs.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_playback_panel.h"

#include <optional>

namespace {

constexpr int kNamesShown = 40;

}  // namespace

/// Shows an operation's message and then everything that it may have changed.
void frmComposer::take(const EditOutcome& outcome) {
    if (!outcome.message.isEmpty()) {
        silenceHands();
        services_.dialogs.message(outcome.message);
        takeActivation();
    }
    if (outcome.emptied) {
        playback_.player().silenceAll();
        auto& palette = ui_->palette->ui();
        for (QPushButton* button : {palette.cmdInsNota, palette.cmdInsPausa, palette.cmdCanc})
            button->setEnabled(true);
        showEntryNumber({});
        showEntryName({});
        showEditFrame(false);
    }
    showMelody();
}

void frmComposer::takeTempoAndInstrument() {
    ui_->playback->showTempo(composition_.tempo);
    if (composition_.instrument != services_.funzioniMM.currentInstrument())
        chooseInstrument(composition_.instrument);
    ui_->instrument->showProgram(composition_.instrument);
}

/// Costs the same however long the melody is.
void frmComposer::showMelody() {
    unsaved_.changed();
    const Melody& melody = composition_.melody;
    const QString names = melody.lastNames(kNamesShown);
    ui_->lblNoteString->setText(names);
    ui_->lblNome->setText(composition_.name);
    const QString count = melody.empty() ? QString() : QString::number(melody.EntryCount());
    ui_->lblNt->setText(count);
    ui_->lblNt->setAccessibleDescription(count);
    ui_->palette->showSettings(composition_.settings);
    ui_->range->showTransposition(composition_.transposition);
    bookmarkPanel_->showBookmarks(composition_.bookmarks.items());
    showUndo();
    menu_.enableExport(export_.canExportAudio(), export_.canExportMidi());
    ui_->Regolo->refresh();
    showRange();
    showCurrentEntry();
}

/// An empty melody has no range to show.
void frmComposer::showRange() {
    const PlayRange& range = composition_.range;
    if (composition_.melody.empty()) {
        ui_->range->clearRange();
        ui_->Regolo->setPlayRange(-1, -1);
        return;
    }
    ui_->range->showRange(range);
    ui_->Regolo->setPlayRange(range.start(), range.end());
}

void frmComposer::showActiveNote() {
    const int note = composition_.activeNote;
    const QString name = pitch::isPlayable(note) ? pitch::NoteName(note) : QString();
    ui_->palette->showActiveNote(name);
    ui_->frmModifica->showActiveNote(name);
    ui_->Regolo->setActiveNote(note);
}

/// The entry that sounds, or else the one that was stepped to, is the current one on the staff.
void frmComposer::showCurrentEntry() {
    std::optional<int> current;
    if (composition_.step.active)
        current = composition_.step.index;
    else if (shownNumber_ > 0)
        current = shownNumber_ - 1;
    if (current && !composition_.melody.has(*current))
        current.reset();
    ui_->Regolo->setCurrentEntry(current);
}

/// After a change at the step index the frame names the note that now stands there.
void frmComposer::showStepIndex() {
    const int index = composition_.step.index;
    if (composition_.melody.has(index)) {
        ui_->frmModifica->showActiveNote(
            pitch::NoteName(composition_.melody.entry(index).noteNumber()));
    }
}

void frmComposer::showEditFrame(bool on) {
    showPanel(*ui_->frmModifica, on);
}

void frmComposer::showPanel(QWidget& panel, bool on) {
    const bool opens = on && panel.isHidden();
    panel.setVisible(on);
    // It has its place in the column once that is laid out.
    if (opens) {
        QMetaObject::invokeMethod(
            ui_->side, [this, &panel] { ui_->side->ensureWidgetVisible(&panel, 0, 0); },
            Qt::QueuedConnection);
    }
    const bool anyOpen =
        !ui_->frmModifica->isHidden() || !browser_->isHidden() || !bookmarkPanel_->isHidden();
    ui_->lblGuida->setVisible(!anyOpen);
}

void frmComposer::showLibrary() {
    showPanel(*browser_, true);
    browser_->showEntries(library_);
}

void frmComposer::showUndo() {
    const bool idle = !playback_.player().playing();
    menu_.enableUndo(idle && editor_.canUndo(), idle && editor_.canRedo());
}

void frmComposer::showPlaying(bool playing) {
    ui_->playback->showPlaying(playing);
    showUndo();
}

void frmComposer::enableCanc(bool enabled) {
    ui_->palette->ui().cmdCanc->setEnabled(enabled);
}

void frmComposer::showEntryNumber(const QString& text) {
    ui_->playback->ui().lblNe->setText(text);
    shownNumber_ = text.toInt();
    showCurrentEntry();
}

void frmComposer::showEntryName(const QString& text) {
    ui_->playback->ui().lblPnn->setText(text);
}

void frmComposer::markKey(pitch::NoteIndex key, bool on) {
    ui_->lb->setMarked(key, on);
}

void frmComposer::focusPlay() {
    ui_->playback->ui().cmdPlay->setFocus();
}

void frmComposer::openEditFrame() {
    showEditFrame(true);
    ui_->frmModifica->resetMultiplier();
}

void frmComposer::hideEditFrame() {
    showEditFrame(false);
}

void frmComposer::showStepEntry(const StepEntry& entry) {
    showActiveNote();
    ui_->palette->showActiveNote(entry.noteName);
    ui_->frmModifica->showEntry(entry);
}

void frmComposer::untickLoop() {
    ui_->playback->ui().chekLoop->setChecked(false);
}
