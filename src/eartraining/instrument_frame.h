#pragma once

#include <QGroupBox>

#include <memory>

class FunzioniMM;

namespace Ui {
class InstrumentFrame;
}

/// The frame `Fr1`, in which any of the 128 instruments can be chosen.
class InstrumentFrame : public QGroupBox {
public:
    explicit InstrumentFrame(QWidget* parent = nullptr);
    ~InstrumentFrame() override;

    void attach(FunzioniMM& funzioniMM);

    /// Shows the frame with the current instrument.
    void mnuSs_Click();
    /// Chooses an instrument, whether the frame is to be seen or not.
    void choose(int program);

private:
    void InstrS_Change();
    void showInstrument();

    std::unique_ptr<Ui::InstrumentFrame> ui_;
    FunzioniMM* funzioniMM_ = nullptr;
};
