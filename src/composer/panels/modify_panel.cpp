#include "composer/panels/modify_panel.h"

#include "composer/melody/rhythm.h"
#include "core/letter.h"
#include "platform/user_text.h"
#include "ui_modify_panel.h"
#include "widgets/action_icon.h"
#include "widgets/appearance.h"

#include <QStringList>

namespace {

constexpr double kActiveNoteTextScale = 1.3;
constexpr int kMultipliers = 4;

/// "n=normale s=staccato …": what the letters of the list mean.
QString lettersInWords() {
    QStringList words;
    for (const letter::EntryLetter& row : letter::kAll)
        words += QStringLiteral("%1=%2").arg(letter::tokenOf(row), UserText::tr(row.name));
    return words.join(QLatin1Char(' '));
}

}  // namespace

ModifyPanel::ModifyPanel(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::ModifyPanel>()) {
    ui_->setupUi(this);
    setActionIcon(*ui_->cmdModifica_0, ActionIcon::Edit);
    setActionIcon(*ui_->cmdInsertNote, ActionIcon::Insert);
    setActionIcon(*ui_->cmdCancNota, ActionIcon::Delete);
    setActionIcon(*ui_->cmdDuplica, ActionIcon::Duplicate);
    for (const rhythm::NamedDuration& value : rhythm::namedValues())
        ui_->cmbDurata->addItem(value.name);
    ui_->cmbDurata->addItem(UserText::tr(rhythm::kNoValueName));
    ui_->cmbDurata->setMaxVisibleItems(ui_->cmbDurata->count());
    for (int multiplier = 1; multiplier <= kMultipliers; ++multiplier)
        ui_->cmbPer->addItem(QString::number(multiplier));
    for (const letter::EntryLetter& row : letter::kAll)
        ui_->cmbAttributi->addItem(letter::tokenOf(row));
    ui_->cmbAttributi->setToolTip(lettersInWords());
    appearance::enlargeText(*ui_->lblActualNote, kActiveNoteTextScale);
    connect(ui_->cmbDurata, &QComboBox::currentTextChanged, this, [this](const QString& name) {
        ui_->cmdModifica_0->setEnabled(name != UserText::tr(rhythm::kNoValueName));
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
    ui_->lblActualNote->setAccessibleName(UserText::tr("Nota attiva %1").arg(name));
}

EditChoice ModifyPanel::choice() const {
    return {ui_->cmbDurata->currentText(), ui_->cmbPer->currentText(),
            ui_->cmbAttributi->currentText()};
}
