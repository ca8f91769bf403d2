#include "eartraining/chord/chord_panel.h"

#include "eartraining/chord/chord_exercise.h"
#include "eartraining/ear_colours.h"
#include "platform/user_text.h"
#include "ui_chord_panel.h"
#include "widgets/appearance.h"
#include "widgets/colour_button.h"
#include "widgets/mode_button.h"
#include "widgets/panel_text.h"

namespace {

using chord_types::kCount;

constexpr double kTypeTextScale = 1.5;
constexpr double kTypeLines = 2.2;
constexpr double kMarkerLines = 1.2;

/// The types in words, for screen readers.
constexpr std::array<const char*, kCount> kSpoken{
    QT_TRANSLATE_NOOP("UserText", "minore"), QT_TRANSLATE_NOOP("UserText", "maggiore"),
    QT_TRANSLATE_NOOP("UserText", "diminuito"), QT_TRANSLATE_NOOP("UserText", "eccedente")};

constexpr const char* kShowsKeys = QT_TRANSLATE_NOOP("UserText", "Mostra tasti suonati");
constexpr const char* kHidesKeys = QT_TRANSLATE_NOOP("UserText", "Nascondi tasti suonati");

}  // namespace

ChordPanel::ChordPanel(ChordExercise& exercise, QWidget* parent)
    : ExercisePanel(exercise, {"mnuRicTa", UserText::tr("Riconoscimento tipo accordo")}, parent),
      ui_(std::make_unique<Ui::ChordPanel>()),
      chord_(exercise) {
    ui_->setupUi(this);
    setButtons(*ui_->ComdRacStart, *ui_->cmdRiascoltaAccordo);
    buildTypes();
    appearance::keepPlace(*ui_->ComdRacStart);
    styleModeButtons(*ui_->lblModoVt, *ui_->lblVt);
    panel_text::reserveWidest(*ui_->lblSpiegaVt,
                              {UserText::tr(kShowsKeys), UserText::tr(kHidesKeys)});
    connectControls();
    showMode();
}

ChordPanel::~ChordPanel() = default;

void ChordPanel::buildTypes() {
    for (int i = 0; i < kCount; ++i) {
        const auto place = static_cast<std::size_t>(i);
        auto* type = new ColourButton(this);
        type->setObjectName(QStringLiteral("TipoAcc_%1").arg(i));
        type->setText(UserText::tr(chord_types::kTypes[place].name));
        type->setAccessibleName(UserText::tr("Accordo %1").arg(UserText::tr(kSpoken[place])));
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
        marker->setToolTip(UserText::tr("Accordo disponibile"));
        ui_->answers->addWidget(marker, 1, i);
        markers_[static_cast<std::size_t>(i)] = marker;
    }
}

QWidget* ChordPanel::answerControl(int answer) const {
    return types_[static_cast<std::size_t>(answer)];
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
    markers_[place]->setToolTip(chord_.available(type) ? UserText::tr("Tipo accordo disponibile")
                                                       : UserText::tr("Tipo accordo escluso"));
    showAvailability(type);
}

void ChordPanel::lblVt_Click() {
    chord_.toggleKeys();
    showMode();
}

void ChordPanel::showMode() {
    const bool shows = chord_.showsKeys();
    ui_->lblVt->setText(shows ? UserText::tr("VT") : UserText::tr("NT"));
    ui_->lblVt->setToolTip(UserText::tr(shows ? kShowsKeys : kHidesKeys));
    ui_->lblSpiegaVt->setText(ui_->lblVt->toolTip());
    ui_->lblVt->setAccessibleName(UserText::tr("Modo: %1").arg(ui_->lblVt->toolTip()));
}

void ChordPanel::showAvailability(int type) {
    const auto place = static_cast<std::size_t>(type);
    ColourButton& marker = *markers_[place];
    marker.showAvailable(chord_.available(type));
    marker.setAccessibleName(types_[place]->accessibleName() + QStringLiteral(": ") +
                             marker.toolTip());
}
