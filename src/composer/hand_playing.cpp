#include "composer/hand_playing.h"

#include "composer/composer_state.h"
#include "composer/composer_view.h"
#include "composer/melody/melody_editor.h"
#include "core/funzioni_mm.h"
#include "ui_entry_palette_panel.h"
#include "ui_frmComposer.h"

namespace {

constexpr int kKeyVelocity = 90;

}  // namespace

HandPlaying::HandPlaying(Ui::frmComposer& ui, ComposerView& view, FunzioniMM& funzioniMM,
                         MelodyEditor& editor, ComposerState& state)
    : view_(view),
      funzioniMM_(funzioniMM),
      editor_(editor),
      insertButton_(*ui.palette->ui().cmdInsNota),
      state_(state) {
    connect(ui.lb, &PianoKeyboard::keyDown, this, &HandPlaying::lb_MouseDown);
    connect(ui.lb, &PianoKeyboard::keyUp, this, &HandPlaying::lb_MouseUp);
    connect(ui.lb, &PianoKeyboard::keyEntered, this, &HandPlaying::lb_Enter);
    connect(ui.Regolo, &ComposerStaff::noteChosen, this, &HandPlaying::Regolo_MouseDown);
    connect(ui.Regolo, &ComposerStaff::noteDoubleClicked, this, &HandPlaying::Regolo_DblClick);
    connect(ui.Regolo, &ComposerStaff::noteReleased, this, &HandPlaying::Regolo_MouseUp);
}

bool HandPlaying::insertsDirectly() const {
    return state_.insertsDirectly;
}

void HandPlaying::setInsertsDirectly(bool on) {
    state_.insertsDirectly = on;
}

void HandPlaying::pressKey(pitch::NoteNumber note) {
    beginNote(note);
    if (insertsDirectly())
        insertButton_.click();
}

void HandPlaying::beginNote(pitch::NoteNumber note) {
    view_.markKey(pitch::noteIndexOf(note), true);
    funzioniMM_.NoteOn(FunzioniMM::kMelodyChannel, note, kKeyVelocity);
    if (editor_.chooseActiveNote(note))
        view_.showActiveNote();
}

void HandPlaying::endNote(pitch::NoteNumber note) {
    funzioniMM_.NoteOff(FunzioniMM::kMelodyChannel, note);
    view_.markKey(pitch::noteIndexOf(note), false);
}

void HandPlaying::lb_MouseDown(int index) {
    pressKey(pitch::noteNumberOf(static_cast<pitch::NoteIndex>(index)));
}

void HandPlaying::lb_MouseUp(int index) {
    endNote(pitch::noteNumberOf(static_cast<pitch::NoteIndex>(index)));
}

/// Where keys insert by themselves, the press has done it.
void HandPlaying::lb_Enter() {
    if (!insertsDirectly())
        insertButton_.click();
}

void HandPlaying::Regolo_MouseDown(int note) {
    pressKey(static_cast<pitch::NoteNumber>(note));
}

/// Where the presses insert by themselves, the second one has done it.
void HandPlaying::Regolo_DblClick() {
    if (!insertsDirectly())
        insertButton_.click();
}

void HandPlaying::Regolo_MouseUp(int note) {
    endNote(static_cast<pitch::NoteNumber>(note));
}
