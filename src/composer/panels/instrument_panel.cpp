#include "composer/panels/instrument_panel.h"

#include "core/instruments.h"
#include "platform/user_text.h"
#include "ui_instrument_panel.h"
#include "widgets/panel_text.h"

#include <QMenu>
#include <QSignalBlocker>

#include <array>

namespace {

constexpr int kProgramsInFamily = 8;

/// The families of General MIDI, of eight programs each.
constexpr std::array<const char*, instruments::kCount / kProgramsInFamily> kFamilies{
    QT_TRANSLATE_NOOP("UserText", "Pianoforti"),
    QT_TRANSLATE_NOOP("UserText", "Percussioni intonate"),
    QT_TRANSLATE_NOOP("UserText", "Organi"),
    QT_TRANSLATE_NOOP("UserText", "Chitarre"),
    QT_TRANSLATE_NOOP("UserText", "Bassi"),
    QT_TRANSLATE_NOOP("UserText", "Archi"),
    QT_TRANSLATE_NOOP("UserText", "Insiemi e voci"),
    QT_TRANSLATE_NOOP("UserText", "Ottoni"),
    QT_TRANSLATE_NOOP("UserText", "Ance"),
    QT_TRANSLATE_NOOP("UserText", "Flauti"),
    QT_TRANSLATE_NOOP("UserText", "Sintetizzatori"),
    QT_TRANSLATE_NOOP("UserText", "Tappeti sonori"),
    QT_TRANSLATE_NOOP("UserText", "Effetti sintetici"),
    QT_TRANSLATE_NOOP("UserText", "Strumenti etnici"),
    QT_TRANSLATE_NOOP("UserText", "Percussioni"),
    QT_TRANSLATE_NOOP("UserText", "Rumori")};

}  // namespace

InstrumentPanel::InstrumentPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::InstrumentPanel>()) {
    ui_->setupUi(this);
    ui_->InstrS->setRange(0, instruments::kCount - 1);
    connect(ui_->InstrS, &QSlider::valueChanged, this, &InstrumentPanel::programChosen);
    panel_text::reserve(*ui_->lblInstr, instruments::caption(24), 4);
    auto* menu = new QMenu(ui_->cmdStrumento);
    for (std::size_t family = 0; family < kFamilies.size(); ++family) {
        fillFamily(*menu->addMenu(UserText::tr(kFamilies[family])),
                   static_cast<int>(family) * kProgramsInFamily);
    }
    ui_->cmdStrumento->setMenu(menu);
}

InstrumentPanel::~InstrumentPanel() = default;

void InstrumentPanel::fillFamily(QMenu& menu, int firstProgram) {
    for (int program = firstProgram; program < firstProgram + kProgramsInFamily; ++program) {
        menu.addAction(instruments::caption(program), ui_->InstrS,
                       [this, program] { ui_->InstrS->setValue(program); });
    }
}

void InstrumentPanel::showProgram(int program) {
    const QSignalBlocker silent(ui_->InstrS);
    ui_->InstrS->setValue(program);
    ui_->lblInstr->setText(instruments::caption(program));
}
