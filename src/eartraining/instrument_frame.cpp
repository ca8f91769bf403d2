#include "eartraining/instrument_frame.h"

#include "core/instruments.h"
#include "ui_instrument_frame.h"
#include "widgets/instrument_button.h"
#include "widgets/panel_text.h"

#include <QSignalBlocker>

namespace {

QStringList captions() {
    QStringList all;
    for (int program = 0; program < instruments::kCount; ++program)
        all << instruments::caption(program);
    return all;
}

}  // namespace

InstrumentFrame::InstrumentFrame(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::InstrumentFrame>()) {
    ui_->setupUi(this);
    panel_text::reserveWidest(*ui_->lblInstr, captions());
    connect(ui_->InstrS, &QSlider::valueChanged, this, &InstrumentFrame::programChosen);
    connect(ui_->cmdStrumento, &InstrumentButton::programChosen, ui_->InstrS, &QSlider::setValue);
    connect(ui_->cmdOk, &QPushButton::clicked, this, &QWidget::hide);
    hide();
}

InstrumentFrame::~InstrumentFrame() = default;

void InstrumentFrame::open(int program) {
    show();
    showProgram(program);
    ui_->InstrS->setFocus();
}

void InstrumentFrame::showProgram(int program) {
    const QSignalBlocker blocker(ui_->InstrS);
    ui_->InstrS->setValue(program);
    ui_->cmdStrumento->setProgram(program);
    ui_->lblInstr->setText(instruments::caption(program));
}
