// What the window does when its controls are used.

#include "composer/frmComposer.h"
#include "core/funzioni_mm.h"
#include "core/pitch.h"
#include "platform/dialogs.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"
#include "ui_playback_panel.h"
#include "ui_range_panel.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kKeyVelocity = 90;

}  // namespace

void frmComposer::cmdSimbNote_Click(std::uint8_t index) {
    ui_->palette->ui().cmdInsNota->setFocus();
    composition_.settings.chooseSymbol(index);
    ui_->palette->showSettings(composition_.settings);
}

void frmComposer::cmdAttrNota_Click(std::uint8_t index) {
    composition_.settings.clickAttribute(index);
    ui_->palette->showSettings(composition_.settings);
}

void frmComposer::ckConsAtt_Click() {
    composition_.settings.setKeepsAttributes(ui_->palette->ui().ckConsAtt->isChecked());
}

void frmComposer::lb_MouseDown(int index) {
    noteDown(pitch::noteNumberOf(static_cast<pitch::NoteIndex>(index)));
}

void frmComposer::lb_MouseUp(int index) {
    noteUp(pitch::noteNumberOf(static_cast<pitch::NoteIndex>(index)));
}

void frmComposer::lb_DblClick() {
    cmdInsNota_Click();
    focusPlay();
}

void frmComposer::lblActNote_DblClick() {
    keys_.piano().cycleOctave();
}

void frmComposer::cmdInsNota_Click() {
    if (!pitch::isPlayable(composition_.activeNote))
        return;
    focusPlay();
    const EditOutcome outcome = editor_.insertNote();
    // A tie may have replaced the entry of the edit frame.
    if (composition_.step.frameOpen && !playback_.player().playing())
        playback_.showStepPlace();
    take(outcome);
}

void frmComposer::cmdInsPausa_Click() {
    ui_->palette->showActiveNote(pitch::NoteName(pitch::kRest));
    take(editor_.insertRest());
}

void frmComposer::cmdCanc_Click() {
    if (composition_.melody.EntryCount() == 1) {
        cmdReset_Click();
        return;
    }
    ui_->palette->ui().cmdInsNota->setFocus();
    const EditOutcome outcome = editor_.deleteLast();
    if (outcome.stepEntryGone)
        playback_.followStep(true);
    take(outcome);
}

void frmComposer::cmdReset_Click() {
    playback_.stop();
    take(editor_.reset());
    ui_->palette->ui().cmdInsNota->setFocus();
}

void frmComposer::cmdPlay_Click() {
    if (refusesDamaged())
        return;
    playback_.clickPlay();
}

void frmComposer::chekLoop_Click() {
    auto& playback = ui_->playback->ui();
    playback_.player().setLoops(playback.chekLoop->isChecked());
    focusPlay();
}

void frmComposer::lblStep_Click(StepMode::Direction direction) {
    if (refusesDamaged())
        return;
    const QString message = playback_.step(direction);
    showCurrentEntry();
    if (message.isEmpty())
        return;
    silenceHands();
    services_.dialogs.message(message);
}

/// The mouse leaves the focus where it was; only a user who went to the bar with Tab stays on it.
void frmComposer::Slider1_Change() {
    const QScrollBar& bar = *ui_->playback->ui().Slider1;
    composition_.tempo = bar.value();
    unsaved_.changed();
    ui_->playback->showTempo(composition_.tempo);
    if (!bar.hasFocus())
        focusPlay();
}

void frmComposer::lblNt_DblClick() {
    playback_.player().toggleKeepLastNumber();
}

/// Says again what is wrong with a file's melody that cannot be played.
bool frmComposer::refusesDamaged() {
    if (composition_.melody.consistent())
        return false;
    silenceHands();
    services_.dialogs.message(damagedMelodyText());
    return true;
}

void frmComposer::mnuPlayRitardo_Click() {
    if (refusesDamaged())
        return;
    playback_.clickDelayedPlay();
}

/// Returns when the arrow was released.
void frmComposer::lblid_MouseDown(PlayRange::Arrow arrow) {
    arrows_.hold(arrow, *this);
}

void frmComposer::lblid_MouseUp() {
    arrows_.release();
    focusPlay();
}

void frmComposer::lblid_Step(PlayRange::Arrow arrow) {
    arrows_.step(arrow, *this);
}

void frmComposer::lblNini_Validate() {
    QLineEdit& box = *ui_->range->ui().lblNini;
    const std::int16_t index = composition_.step.index;
    box.setText(editor_.validateStart(box.text()));
    if (composition_.step.frameOpen && composition_.step.index != index) {
        showStepIndex();
        playback_.showStepPlace();
    }
    showCurrentEntry();
}

void frmComposer::lblNfine_Validate() {
    QLineEdit& box = *ui_->range->ui().lblNfine;
    box.setText(editor_.validateEnd(box.text()));
    showCurrentEntry();
}

void frmComposer::lblIDs_Click(int semitones) {
    editor_.changeTransposition(semitones);
    ui_->range->showTransposition(composition_.transposition);
}

void frmComposer::lblSemitoni_Click() {
    take(editor_.transpose());
    focusPlay();
}

void frmComposer::cmdModifica_Click() {
    const EditChoice choice = ui_->frmModifica->choice();
    const EditOutcome outcome = editor_.modify(choice);
    if (outcome.changed)
        showStepIndex();
    take(outcome);
    if (outcome.changed)
        playback_.playStepEntry();
}

void frmComposer::cmdInsertNote_Click() {
    takeAtStep(editor_.insertAfter(ui_->frmModifica->choice()));
}

void frmComposer::cmdCancNota_Click() {
    if (composition_.melody.EntryCount() == 1) {
        cmdReset_Click();
        return;
    }
    takeAtStep(editor_.deleteAtStep());
}

void frmComposer::mnuAnnulla_Click() {
    if (!playback_.player().playing())
        takeRestored(editor_.undo());
}

void frmComposer::mnuRipeti_Click() {
    if (!playback_.player().playing())
        takeRestored(editor_.redo());
}

/// Shows what undo or redo brought back.
void frmComposer::takeRestored(const EditOutcome& outcome) {
    takeTempoAndInstrument();
    playback_.followStep(outcome.stepEntryGone);
    take(outcome);
}

/// Shows an insertion or a deletion at the step index: the edit frame names the note that is there
/// now, but keeps its choices for the next one.
void frmComposer::takeAtStep(const EditOutcome& outcome) {
    if (outcome.changed) {
        showStepIndex();
        playback_.showStepPlace();
    }
    take(outcome);
}

void frmComposer::chooseInstrument(int program) {
    composition_.instrument = program;
    unsaved_.changed();
    services_.funzioniMM.chooseInstrument(program);
    ui_->instrument->showProgram(program);
}

/// Sounds a note that a hand plays, and makes it the active one.
void frmComposer::noteDown(pitch::NoteNumber note) {
    markKey(pitch::noteIndexOf(note), true);
    services_.funzioniMM.NoteOn(FunzioniMM::kMelodyChannel, note, kKeyVelocity);
    if (editor_.chooseActiveNote(note))
        showActiveNote();
}

void frmComposer::noteUp(pitch::NoteNumber note) {
    services_.funzioniMM.NoteOff(FunzioniMM::kMelodyChannel, note);
    markKey(pitch::noteIndexOf(note), false);
}

void frmComposer::stepKeyDown(bool forward) {
    lblStep_Click(forward ? StepMode::Direction::Forward : StepMode::Direction::Backward);
    ui_->palette->ui().cmdInsNota->setFocus();
}

/// Without an active note it begins at middle C.
void frmComposer::semitoneKeyDown(bool upwards) {
    int note = pitch::kMiddleC;
    if (pitch::isPlayable(composition_.activeNote))
        note = composition_.activeNote + (upwards ? 1 : -1);
    semitoneNote_ = static_cast<pitch::NoteNumber>(
        std::clamp<int>(note, pitch::kLowestNote, pitch::kHighestNote));
    noteDown(semitoneNote_);
}

void frmComposer::semitoneKeyUp() {
    noteUp(std::exchange(semitoneNote_, pitch::kRest));
}

/// Ends every note that a key of the computer holds, as before a box in which its release is lost.
void frmComposer::silenceHands() {
    keys_.releaseAll();
}
