#pragma once

#include "core/midi_keyboard.h"

#include <QObject>

class ComposerMenu;
class HandPlaying;
class QAbstractButton;
class QWidget;

/// A MIDI keyboard in the composer: its keys play as those of the piano on the window do, and the
/// pedal inserts the active note.
class MidiPlaying : public QObject, private MidiKeysListener {
    Q_OBJECT

public:
    /// `insertButton` inserts the active note.
    MidiPlaying(QWidget& window, MidiKeyboard* keyboard, HandPlaying& hand,
                QAbstractButton& insertButton, ComposerMenu& menu);

    /// Ends every note that a key holds.
    void releaseKeys() { keys_.releaseKeys(); }

private Q_SLOTS:
    void mnuInsDiretto_Click(bool on);

private:
    void keyDown(int note) override;
    void keyUp(int note) override;
    void pedalDown() override;

    MidiKeyboard* keyboard_;
    HandPlaying& hand_;
    QAbstractButton& insertButton_;
    MidiKeyboard::Window keys_;
};
