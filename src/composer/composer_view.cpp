#include "composer/composer_view.h"

#include "composer/engraved_melody.h"
#include "composer/melody/composition.h"
#include "composer/side_panels.h"
#include "core/pitch.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_playback_panel.h"

#include <optional>

ComposerView::ComposerView(Ui::frmComposer& ui, SidePanels& side, const Composition& composition)
    : ui_(ui), side_(side), composition_(composition) {
    ui_.Regolo->setSource(engravedSource(composition_.melody));
}

/// An empty melody has no range to show.
void ComposerView::showRange() {
    if (composition_.melody.empty())
        ui_.range->clearRange();
    else
        ui_.range->showRange(composition_.range);
    showRangeMarks();
}

void ComposerView::showRangeMarks() {
    const PlayRange& range = composition_.range;
    if (composition_.melody.empty())
        ui_.Regolo->setPlayRange(-1, -1);
    else
        ui_.Regolo->setPlayRange(range.start(), range.end());
}

void ComposerView::showActiveNote() {
    const int note = composition_.activeNote;
    const QString name = pitch::isPlayable(note) ? pitch::NoteName(note) : QString();
    ui_.palette->showActiveNote(name);
    ui_.frmModifica->showActiveNote(name);
    showPreview();
}

void ComposerView::showSettings() {
    ui_.palette->showSettings(composition_.settings);
    showPreview();
}

/// While the user steps, the active note is one for the entry that was stepped to.
void ComposerView::showPreview() {
    EntrySettings settings = composition_.settings;
    const auto next = settings.ComputeEntry(EntrySettings::Kind::Note, Melody());
    const bool tied = settings.attribute() == EntrySettings::Legato && !composition_.melody.empty();
    ui_.Regolo->setPreview(
        {{composition_.activeNote, next.duration, next.letter.front().toLatin1()},
         tied,
         composition_.step.active});
}

void ComposerView::setNotation(const score::Notation& notation) {
    ui_.Regolo->setSource(engravedSource(composition_.melody, notation));
}

void ComposerView::showEntries() {
    const ChangeLog& changes = composition_.melody.changes();
    if (const auto first = changes.firstSince(shownRevision_))
        ui_.Regolo->changedFrom(*first);
    shownRevision_ = changes.revision();
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
    showPreview();
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
}

void ComposerView::announceStep() {
    speech_.stepped();
}

void ComposerView::untickLoop() {
    ui_.playback->ui().chekLoop->setChecked(false);
}
