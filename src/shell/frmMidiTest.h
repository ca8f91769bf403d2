#pragma once

#include "core/midi_keyboard.h"

#include <QDialog>

#include <memory>

class FunzioniMM;
class MidiOut;
class QListWidgetItem;
struct Services;

namespace Ui {
class frmMidiTest;
}

/// The window that lists the machine's MIDI outputs, opens the one that the user picks for the
/// rest of the run, and tries it with a note and with any instrument. Of the MIDI keyboards it
/// shows which there are and the key that was heard last.
class frmMidiTest : public QDialog, private MidiKeysListener {
    Q_OBJECT

public:
    frmMidiTest(const Services& services, QWidget* parent);
    ~frmMidiTest() override;

    void LstMidiDev_Click();
    void cmdTest_Click();
    void cmdOff_Click();
    void InstrS_Change();

    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void connectControls();
    void Form_Activate();
    void Form_Unload();
    void showInstrument();
    void nameInstrument(int program);
    int showDeviceId(const QListWidgetItem& line);

    void keyDown(int note) override;
    void keyUp(int /*note*/) override {}
    void keyboardsChanged() override;

    MidiOut& midiOut_;
    FunzioniMM& funzioniMM_;
    const MidiKeyboard* keyboard_;
    std::unique_ptr<Ui::frmMidiTest> ui_;
    QString lastKey_;
    MidiKeyboard::Window keys_;
    bool activated_ = false;
};
