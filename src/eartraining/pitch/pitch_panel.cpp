#include "eartraining/pitch/pitch_panel.h"

#include "eartraining/pitch/pitch_exercise.h"
#include "platform/user_text.h"
#include "ui_pitch_panel.h"
#include "widgets/appearance.h"
#include "widgets/mode_button.h"
#include "widgets/panel_text.h"

namespace {

constexpr const char* kPlaysInterval = QT_TRANSLATE_NOOP("UserText", "Suona intervallo melodico");
constexpr const char* kPlaysNote =
    QT_TRANSLATE_NOOP("UserText", "Suona nota casuale all'interno dell'intervallo scelto");

}  // namespace

PitchPanel::PitchPanel(PitchExercise& exercise, QWidget* parent)
    : ExercisePanel(exercise, {"mnuNota", UserText::tr("Riconoscimento altezza nota")}, parent),
      ui_(std::make_unique<Ui::PitchPanel>()),
      pitch_(exercise) {
    ui_->setupUi(this);
    setButtons(*ui_->IntoStart, *ui_->cmdRiascoltaNota);
    for (QWidget* button : {ui_->IntoStart, ui_->cmdReimposta})
        appearance::keepPlace(*button);
    styleModeButtons(*ui_->Label6, *ui_->lblMod);
    panel_text::reserveWidest(*ui_->lblSpiegaMod,
                              {UserText::tr(kPlaysInterval), UserText::tr(kPlaysNote)});
    connect(ui_->cmdReimposta, &QPushButton::clicked, this, [this] { pitch_.reset(); });
    for (QToolButton* label : {ui_->Label6, ui_->lblMod})
        connect(label, &QToolButton::clicked, this, &PitchPanel::lblMod_Click);
    showMode();
}

PitchPanel::~PitchPanel() = default;

void PitchPanel::showState() {
    ExercisePanel::showState();
    ui_->cmdReimposta->setVisible(pitch_.resetVisible());
}

void PitchPanel::lblMod_Click() {
    pitch_.toggleMode();
    showMode();
}

void PitchPanel::showMode() {
    const bool withReference = pitch_.withReference();
    ui_->lblMod->setText(withReference ? QStringLiteral("/") : QStringLiteral("o"));
    ui_->lblMod->setToolTip(UserText::tr(withReference ? kPlaysInterval : kPlaysNote));
    ui_->lblSpiegaMod->setText(ui_->lblMod->toolTip());
    ui_->lblMod->setAccessibleName(UserText::tr("Modo: %1").arg(ui_->lblMod->toolTip()));
}
