#pragma once

#include <QDialog>

#include <memory>

class FunzioniMM;
class MidiOut;
class QListWidgetItem;

namespace Ui {
class frmMidiTest;
}

/// The window that lists the machine's MIDI outputs, opens the one that the user picks for the
/// rest of the run, and tries it with a note and with any instrument.
class frmMidiTest : public QDialog {
    Q_OBJECT

public:
    frmMidiTest(MidiOut& midiOut, FunzioniMM& funzioniMM, QWidget* parent);
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

    MidiOut& midiOut_;
    FunzioniMM& funzioniMM_;
    std::unique_ptr<Ui::frmMidiTest> ui_;
    bool activated_ = false;
};
