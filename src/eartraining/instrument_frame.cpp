#include "eartraining/instrument_frame.h"

#include "core/instruments.h"
#include "ui_instrument_frame.h"
#include "widgets/instrument_button.h"

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
