#include "eartraining/pitch/pitch_panel.h"

#include "eartraining/pitch/pitch_exercise.h"
#include "ui_pitch_panel.h"
#include "widgets/appearance.h"
#include "widgets/mode_button.h"

namespace {

const QString kPlaysInterval = QStringLiteral("Suona intervallo melodico");
const QString kPlaysNote = QStringLiteral("Suona nota casuale all'interno dell'intervallo scelto");

}  // namespace

PitchPanel::PitchPanel(QWidget* parent)
    : QGroupBox(parent), ui_(std::make_unique<Ui::PitchPanel>()) {
    ui_->setupUi(this);
    for (QWidget* button : {ui_->IntoStart, ui_->cmdReimposta})
        appearance::keepPlace(*button);
    styleModeButtons(*ui_->Label6, *ui_->lblMod);
    reserveExplanations(*ui_->lblSpiegaMod, {kPlaysInterval, kPlaysNote});
}

PitchPanel::~PitchPanel() = default;

void PitchPanel::attach(PitchExercise& exercise) {
    exercise_ = &exercise;
    connect(ui_->IntoStart, &QPushButton::clicked, this, [this] { exercise_->startOrStop(); });
    connect(ui_->cmdReimposta, &QPushButton::clicked, this, [this] { exercise_->reset(); });
    for (QToolButton* label : {ui_->Label6, ui_->lblMod})
        connect(label, &QToolButton::clicked, this, &PitchPanel::lblMod_Click);
    showMode();
}

bool PitchPanel::hasButtons() const {
    return !ui_->IntoStart->isHidden() || !ui_->cmdReimposta->isHidden();
}

void PitchPanel::lblMod_Click() {
    exercise_->toggleMode();
    showMode();
}

void PitchPanel::showMode() {
    const bool withReference = exercise_->withReference();
    ui_->lblMod->setText(withReference ? QStringLiteral("/") : QStringLiteral("o"));
    ui_->lblMod->setToolTip(withReference ? kPlaysInterval : kPlaysNote);
    ui_->lblSpiegaMod->setText(ui_->lblMod->toolTip());
    ui_->lblMod->setAccessibleName(QStringLiteral("Modo: %1").arg(ui_->lblMod->toolTip()));
}
