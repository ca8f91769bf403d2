#include "composer/composer_view.h"

#include "composer/melody/composition.h"
#include "composer/side_panels.h"
#include "core/pitch.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_playback_panel.h"

#include <optional>

namespace {

staff_entry::Entry staffEntryOf(const MelodyEntry& entry) {
    const QChar first =
        entry.attribute.isEmpty() ? letter::kNormale.front() : entry.attribute.front();
    return {entry.noteNumber(), entry.quarters(), first.toLatin1()};
}

}  // namespace

ComposerView::ComposerView(Ui::frmComposer& ui, SidePanels& side, const Composition& composition)
    : ui_(ui), side_(side), composition_(composition) {
    ui_.Regolo->setSource(
        {[this] { return int{composition_.melody.EntryCount()}; },
         [this](int entry) { return staffEntryOf(composition_.melody.entry(entry)); }});
}

/// An empty melody has no range to show.
void ComposerView::showRange() {
    const PlayRange& range = composition_.range;
    if (composition_.melody.empty()) {
        ui_.range->clearRange();
        ui_.Regolo->setPlayRange(-1, -1);
        return;
    }
    ui_.range->showRange(range);
    ui_.Regolo->setPlayRange(range.start(), range.end());
}

void ComposerView::showActiveNote() {
    const int note = composition_.activeNote;
    const QString name = pitch::isPlayable(note) ? pitch::NoteName(note) : QString();
    ui_.palette->showActiveNote(name);
    ui_.frmModifica->showActiveNote(name);
    ui_.Regolo->setActiveNote(note);
}

/// The entry that sounds, or else the one that was stepped to, is the current one on the staff.
void ComposerView::showCurrentEntry() {
    std::optional<int> current;
    if (composition_.step.active)
        current = composition_.step.index;
    else if (shownNumber_ > 0)
        current = shownNumber_ - 1;
    if (current && !composition_.melody.has(*current))
        current.reset();
    ui_.Regolo->setCurrentEntry(current);
}

void ComposerView::showStepIndex() {
    const int index = composition_.step.index;
    if (composition_.melody.has(index)) {
        ui_.frmModifica->showActiveNote(
            pitch::NoteName(composition_.melody.entry(index).noteNumber()));
    }
}

void ComposerView::showPlaying(bool playing) {
    ui_.playback->showPlaying(playing);
    if (!composition_.step.active)
        speech_.playing(playing);
    Q_EMIT playingShown();
}

void ComposerView::enableCanc(bool enabled) {
    ui_.palette->ui().cmdCanc->setEnabled(enabled);
}

void ComposerView::showEntryNumber(const QString& text) {
    ui_.playback->ui().lblNe->setText(text);
    shownNumber_ = text.toInt();
    showCurrentEntry();
}

void ComposerView::showEntryName(const QString& text) {
    ui_.playback->ui().lblPnn->setText(text);
}

void ComposerView::markKey(pitch::NoteIndex key, bool on) {
    ui_.lb->setMarked(key, on);
}

void ComposerView::focusPlay() {
    ui_.playback->ui().cmdPlay->setFocus();
}

void ComposerView::openEditFrame() {
    side_.showEditFrame(true);
    ui_.frmModifica->resetMultiplier();
}

void ComposerView::hideEditFrame() {
    side_.showEditFrame(false);
}

void ComposerView::showStepEntry(const StepEntry& entry) {
    showActiveNote();
    ui_.palette->showActiveNote(entry.noteName);
    ui_.frmModifica->showEntry(entry);
    speech_.stepped();
}

void ComposerView::untickLoop() {
    ui_.playback->ui().chekLoop->setChecked(false);
}
