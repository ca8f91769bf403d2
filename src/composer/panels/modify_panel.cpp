#include "composer/panels/modify_panel.h"

#include "composer/melody/rhythm.h"
#include "ui_modify_panel.h"
#include "widgets/appearance.h"

#include <array>

namespace {

constexpr double kActiveNoteTextScale = 1.3;
constexpr int kMultipliers = 4;

constexpr std::array<QLatin1String, 5> kLetters{
    letter::kNormale, letter::kStaccato, letter::kTenuto, letter::kAccentato, letter::kPausa};

}  // namespace

ModifyPanel::ModifyPanel(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::ModifyPanel>()) {
    ui_->setupUi(this);
    for (const rhythm::NamedDuration& value : rhythm::kValues)
        ui_->cmbDurata->addItem(QLatin1String(value.name));
    ui_->cmbDurata->addItem(QLatin1String(rhythm::kNoValueName));
    ui_->cmbDurata->setMaxVisibleItems(ui_->cmbDurata->count());
    for (int multiplier = 1; multiplier <= kMultipliers; ++multiplier)
        ui_->cmbPer->addItem(QString::number(multiplier));
    for (const QLatin1String letter : kLetters)
        ui_->cmbAttributi->addItem(letter);
    appearance::enlargeText(*ui_->lblActualNote, kActiveNoteTextScale);
    connect(ui_->cmbDurata, &QComboBox::currentTextChanged, this, [this](const QString& name) {
        ui_->cmdModifica_0->setEnabled(name != QLatin1String(rhythm::kNoValueName));
    });
}

ModifyPanel::~ModifyPanel() = default;

void ModifyPanel::resetMultiplier() {
    ui_->cmbPer->setCurrentText(QStringLiteral("1"));
}

void ModifyPanel::showEntry(const StepEntry& entry) {
    showActiveNote(entry.noteName);
    ui_->cmbAttributi->setCurrentIndex(ui_->cmbAttributi->findText(entry.letter));
    ui_->cmbDurata->setCurrentText(entry.valueName);
    ui_->cmdModifica_0->setEnabled(entry.canModify);
}

void ModifyPanel::showActiveNote(const QString& name) {
    ui_->lblActualNote->setText(name);
    ui_->lblActualNote->setAccessibleName(QStringLiteral("Nota attiva %1").arg(name));
}

EditChoice ModifyPanel::choice() const {
    return {ui_->cmbDurata->currentText(), ui_->cmbPer->currentText(),
            ui_->cmbAttributi->currentText()};
}
