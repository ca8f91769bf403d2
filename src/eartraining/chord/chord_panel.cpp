#include "eartraining/chord/chord_panel.h"

#include "eartraining/chord/chord_exercise.h"
#include "eartraining/ear_colours.h"
#include "ui_chord_panel.h"
#include "widgets/appearance.h"
#include "widgets/colour_button.h"
#include "widgets/mode_button.h"

namespace {

using chord_types::kCount;

constexpr double kTypeTextScale = 1.5;
constexpr double kTypeLines = 2.2;
constexpr double kMarkerLines = 1.2;

/// The types in words, for screen readers.
constexpr std::array<const char*, kCount> kSpoken{"minore", "maggiore", "diminuito", "eccedente"};

const QString kShowsKeys = QStringLiteral("Mostra tasti suonati");
const QString kHidesKeys = QStringLiteral("Nascondi tasti suonati");

}  // namespace

ChordPanel::ChordPanel(ChordExercise& exercise, QWidget* parent)
    : ExercisePanel(exercise, {"mnuRicTa", QStringLiteral("Riconoscimento tipo accordo")}, parent),
      ui_(std::make_unique<Ui::ChordPanel>()),
      chord_(exercise) {
    ui_->setupUi(this);
    setStartButton(*ui_->ComdRacStart);
    buildTypes();
    appearance::keepPlace(*ui_->ComdRacStart);
    styleModeButtons(*ui_->lblModoVt, *ui_->lblVt);
    reserveExplanations(*ui_->lblSpiegaVt, {kShowsKeys, kHidesKeys});
    connectControls();
    showMode();
}

ChordPanel::~ChordPanel() = default;

void ChordPanel::buildTypes() {
    for (int i = 0; i < kCount; ++i) {
        const auto place = static_cast<std::size_t>(i);
        auto* type = new ColourButton(this);
        type->setObjectName(QStringLiteral("TipoAcc_%1").arg(i));
        type->setText(QString::fromUtf8(chord_types::kTypes[place].name));
        type->setAccessibleName(
            QStringLiteral("Accordo %1").arg(QString::fromUtf8(kSpoken[place])));
        type->setLines(kTypeLines);
        type->setColours(ear_colours::kConsonant, ear_colours::kConsonantText);
        appearance::enlargeText(*type, kTypeTextScale);
        ui_->answers->addWidget(type, 0, i);
        types_[place] = type;
    }
    for (int i = 0; i < kCount; ++i) {
        auto* marker = new ColourButton(this);
        marker->setObjectName(QStringLiteral("EsclTa_%1").arg(i));
        marker->setLines(kMarkerLines);
        marker->setToolTip(QStringLiteral("Accordo disponibile"));
        ui_->answers->addWidget(marker, 1, i);
        markers_[static_cast<std::size_t>(i)] = marker;
    }
}

void ChordPanel::showState() {
    ExercisePanel::showState();
    ui_->cmdRes->setVisible(chord_.resetVisible());
}

void ChordPanel::connectControls() {
    connect(ui_->cmdRes, &QPushButton::clicked, this, [this] { chord_.resetRange(); });
    for (QToolButton* label : {ui_->lblModoVt, ui_->lblVt})
        connect(label, &QToolButton::clicked, this, &ChordPanel::lblVt_Click);
    for (int i = 0; i < kCount; ++i) {
        const auto place = static_cast<std::size_t>(i);
        connect(types_[place], &ColourButton::clicked, this, [this, i] { chord_.typeClicked(i); });
        connect(markers_[place], &ColourButton::clicked, this, [this, i] { EsclTa_Click(i); });
        showAvailability(i);
    }
}

void ChordPanel::EsclTa_Click(int type) {
    const auto place = static_cast<std::size_t>(type);
    if (!chord_types::kTypes[place].excludable)
        return;
    chord_.toggleAvailable(type);
    markers_[place]->setToolTip(chord_.available(type) ? QStringLiteral("Tipo accordo disponibile")
                                                       : QStringLiteral("Tipo accordo escluso"));
    showAvailability(type);
}

void ChordPanel::lblVt_Click() {
    chord_.toggleKeys();
    showMode();
}

void ChordPanel::showMode() {
    const bool shows = chord_.showsKeys();
    ui_->lblVt->setText(shows ? QStringLiteral("VT") : QStringLiteral("NT"));
    ui_->lblVt->setToolTip(shows ? kShowsKeys : kHidesKeys);
    ui_->lblSpiegaVt->setText(ui_->lblVt->toolTip());
    ui_->lblVt->setAccessibleName(QStringLiteral("Modo: %1").arg(ui_->lblVt->toolTip()));
}

void ChordPanel::showAvailability(int type) {
    const auto place = static_cast<std::size_t>(type);
    ColourButton& marker = *markers_[place];
    marker.showAvailable(chord_.available(type));
    marker.setAccessibleName(types_[place]->accessibleName() + QStringLiteral(": ") +
                             marker.toolTip());
}
