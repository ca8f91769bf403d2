#pragma once

#include "metronome/sequence_test.h"

#include <QDialog>

#include <memory>

class FunzioniMM;
class QAbstractButton;
class QComboBox;
struct MetronomeState;

namespace Ui {
class frmConfMetro;
}

/// The window for a custom pulse pattern and the sounds of the pulse kinds. A sound takes effect at
/// once, the pattern and its time signature when the window closes, in whatever way.
class frmConfMetro : public QDialog, private SequenceTestView {
    Q_OBJECT

public:
    frmConfMetro(FunzioniMM& funzioniMM, MetronomeState& state, QWidget* parent);
    ~frmConfMetro() override;

    void seqPreset_Click();
    void cmdTest_Click();

    void done(int result) override;

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    using Note = std::int16_t MetronomeState::*;

    void Form_Load();
    void Form_Unload();
    void connectSound(QComboBox* list, QAbstractButton* letter, Note note);
    bool txtPattern_KeyPress(const QString& typed);
    void showTesting(bool on);

    void showPulse(int pulse, int pulses) override;
    void showEnd() override;
    bool endsTest(const QEvent& input) override;

    FunzioniMM& funzioniMM_;
    MetronomeState& state_;
    std::unique_ptr<Ui::frmConfMetro> ui_;
    SequenceTest test_;
    bool endedByEscape_ = false;  ///< the key is still to come, and does nothing else
};
