#include "composer/midi_playing.h"

#include "composer/composer_menu.h"
#include "composer/hand_playing.h"
#include "core/pitch.h"
#include "widgets/in_front.h"

#include <QAbstractButton>

MidiPlaying::MidiPlaying(QWidget& window, MidiKeyboard* keyboard, HandPlaying& hand,
                         QAbstractButton& insertButton, ComposerMenu& menu)
    : keyboard_(keyboard),
      hand_(hand),
      insertButton_(insertButton),
      keys_(keyboard, *this, [&window] { return isInFront(window); }) {
    menu.setInsertsDirectly(keyboard_ && keyboard_->insertsDirectly());
    connect(&menu, &ComposerMenu::directInsertionChosen, this, &MidiPlaying::mnuInsDiretto_Click);
}

void MidiPlaying::mnuInsDiretto_Click(bool on) {
    if (keyboard_)
        keyboard_->setInsertsDirectly(on);
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
    insertButton_.click();
}
