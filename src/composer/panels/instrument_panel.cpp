#include "composer/panels/instrument_panel.h"

#include "core/instruments.h"
#include "platform/user_text.h"
#include "ui_instrument_panel.h"
#include "widgets/instrument_button.h"
#include "widgets/panel_text.h"

#include <QSignalBlocker>

InstrumentPanel::InstrumentPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::InstrumentPanel>()) {
    ui_->setupUi(this);
    connect(ui_->InstrS, &QSlider::valueChanged, ui_->cmdStrumento, &InstrumentButton::setProgram);
    connect(ui_->InstrS, &QSlider::valueChanged, this, &InstrumentPanel::programChosen);
    panel_text::reserve(*ui_->lblInstr, instruments::caption(24), 4);
    connect(ui_->cmdStrumento, &InstrumentButton::programChosen, ui_->InstrS, &QSlider::setValue);
}

InstrumentPanel::~InstrumentPanel() = default;

void InstrumentPanel::showProgram(int program) {
    const QSignalBlocker silent(ui_->InstrS);
    ui_->InstrS->setValue(program);
    ui_->cmdStrumento->setProgram(program);
    ui_->lblInstr->setText(instruments::caption(program));
}
