#include "composer/midi_playing.h"

#include "composer/composer_menu.h"
#include "composer/hand_playing.h"
#include "core/pitch.h"
#include "ui_entry_palette_panel.h"
#include "widgets/in_front.h"

MidiPlaying::MidiPlaying(QWidget& window, MidiKeyboard* keyboard, HandPlaying& hand,
                         Ui::EntryPalettePanel& palette, ComposerMenu& menu)
    : hand_(hand),
      palette_(palette),
      menu_(menu),
      keys_(keyboard, *this, [&window] { return isInFront(window); }) {
    connect(&menu, &ComposerMenu::directInsertionChosen, this, &MidiPlaying::mnuInsDiretto_Click);
    connect(palette_.ckInsDiretto, &QCheckBox::clicked, this, &MidiPlaying::mnuInsDiretto_Click);
    showDirectInsertion();
}

void MidiPlaying::mnuInsDiretto_Click(bool on) {
    hand_.setInsertsDirectly(on);
    showDirectInsertion();
}

void MidiPlaying::showDirectInsertion() {
    const bool on = hand_.insertsDirectly();
    menu_.setInsertsDirectly(on);
    palette_.ckInsDiretto->setChecked(on);
}

void MidiPlaying::keyDown(int note) {
    if (pitch::isPlayable(note))
        hand_.pressKey(static_cast<pitch::NoteNumber>(note));
}

void MidiPlaying::keyUp(int note) {
    if (pitch::isPlayable(note))
        hand_.endNote(static_cast<pitch::NoteNumber>(note));
}

void MidiPlaying::pedalDown() {
    palette_.cmdInsNota->click();
}
