#include "eartraining/instrument_frame.h"

#include "core/funzioni_mm.h"
#include "core/instruments.h"
#include "ui_instrument_frame.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

int widestCaption(const QFontMetrics& metrics) {
    int widest = 0;
    for (int program = 0; program < instruments::kCount; ++program)
        widest = std::max(widest, metrics.horizontalAdvance(instruments::caption(program)));
    return widest;
}

}  // namespace

InstrumentFrame::InstrumentFrame(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::InstrumentFrame>()) {
    ui_->setupUi(this);
    ui_->lblInstr->setMinimumWidth(widestCaption(ui_->lblInstr->fontMetrics()));
    hide();
}

InstrumentFrame::~InstrumentFrame() = default;

void InstrumentFrame::attach(FunzioniMM& funzioniMM) {
    funzioniMM_ = &funzioniMM;
    connect(ui_->InstrS, &QSlider::valueChanged, this, &InstrumentFrame::InstrS_Change);
    connect(ui_->cmdOk, &QPushButton::clicked, this, &QWidget::hide);
}

void InstrumentFrame::mnuSs_Click() {
    show();
    showInstrument();
    ui_->InstrS->setFocus();
}

void InstrumentFrame::choose(int program) {
    funzioniMM_->chooseInstrument(program);
    showInstrument();
}

void InstrumentFrame::InstrS_Change() {
    choose(ui_->InstrS->value());
}

void InstrumentFrame::showInstrument() {
    const QSignalBlocker silent(ui_->InstrS);
    ui_->InstrS->setValue(funzioniMM_->currentInstrument());
    ui_->lblInstr->setText(instruments::caption(funzioniMM_->currentInstrument()));
}
