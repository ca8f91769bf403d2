#pragma once

#include "metronome/metronome.h"
#include "metronome/tap_tempo.h"

#include <QGroupBox>
#include <QTimer>

#include <memory>

class MetronomeHost;

namespace Ui {
class frmMetro;
}

/// The metronome's frame on the main window, with the metronome; hidden until the user opens it.
class frmMetro : public QGroupBox, private MetronomeView {
    Q_OBJECT

public:
    frmMetro(Runtime& runtime, FunzioniMM& funzioniMM, MetronomeState& state, MetronomeHost& host,
             QWidget* parent);
    ~frmMetro() override;

    /// Shows the frame and gives the focus to the start button.
    void mnuMetro_Click();

    /// While another activity that was started later runs inside the pulse loop, no pulse comes,
    /// and the frame says so.
    void showWaiting(bool waits);
    /// The same where there is no output.
    void outputChanged() { showTempo(); }

    void cmdSSmetro_Click();
    void lblTs_Click();
    void MetroTempoS_Change();
    void lblTempo_Typed(int pulsesPerMinute);
    void cmdBatti_Tap(TapTempo::Time at);
    void lblX12_Click();
    void MetroVol_Scroll();
    void cmdSetup_Click();
    void lblCloseMetro_Click();

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void connectControls();
    void connectTempo(const Runtime& runtime);
    void setShownTempo(double pulsesPerMinute);
    void enableControls(bool on);
    void showTempo();
    void showPace(const QString& word, const QString& why);

    void metronomeStarted() override;
    void metronomeStopped() override;
    void showTimeSignature(const QString& timeSig) override;
    void showLamps(int count) override;
    void darkenLamps() override;
    void lightLamp(int lamp, pulse_pattern::Colour colour) override;

    std::unique_ptr<Ui::frmMetro> ui_;
    FunzioniMM& funzioniMM_;
    MetronomeState& state_;
    MetronomeHost& host_;
    Metronome metronome_;
    TapTempo taps_;
    bool waits_ = false;
    QTimer tempoSpeech_;  ///< until the tempo is announced
};
