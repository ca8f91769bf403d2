#pragma once

#include "core/midi_keyboard.h"

#include <QObject>

class ComposerMenu;
class HandPlaying;
class QWidget;

namespace Ui {
class EntryPalettePanel;
}

/// A MIDI keyboard in the composer: its keys play as those of the piano on the window do, and the
/// pedal inserts the active note. With it goes the choice that keys insert their notes at once.
class MidiPlaying : public QObject, private MidiKeysListener {
    Q_OBJECT

public:
    MidiPlaying(QWidget& window, MidiKeyboard* keyboard, HandPlaying& hand,
                Ui::EntryPalettePanel& palette, ComposerMenu& menu);

    /// Ends every note that a key holds.
    void releaseKeys() { keys_.releaseKeys(); }

private Q_SLOTS:
    void mnuInsDiretto_Click(bool on);

private:
    void showDirectInsertion();
    void keyDown(int note) override;
    void keyUp(int note) override;
    void pedalDown() override;

    HandPlaying& hand_;
    Ui::EntryPalettePanel& palette_;
    ComposerMenu& menu_;
    MidiKeyboard::Window keys_;
};
