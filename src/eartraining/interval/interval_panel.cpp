#include "eartraining/interval/interval_panel.h"

#include "eartraining/ear_colours.h"
#include "eartraining/interval/interval_chart.h"
#include "eartraining/interval/interval_exercise.h"
#include "platform/user_text.h"
#include "ui_interval_panel.h"
#include "widgets/appearance.h"
#include "widgets/colour_button.h"
#include "widgets/double_click.h"
#include "widgets/mode_button.h"
#include "widgets/panel_text.h"

namespace {

using namespace interval_chart;

/// The chart's rows and columns; the first column holds the rows' titles.
constexpr int kAboveRow = 0;
constexpr int kButtonRow = 1;
constexpr int kBelowRow = 2;
constexpr int kMarkerRow = 3;

constexpr double kSemitonesTextScale = 1.25;
constexpr double kSemitonesLines = 2;
constexpr double kMarkerLines = 1.2;

int columnOf(int semitones) {
    return semitones + 1;
}

struct ModeText {
    const char* caption;
    const char* toolTip;
};

constexpr std::array<ModeText, 3> kModes{{
    {":", QT_TRANSLATE_NOOP("UserText", "Suona intervallo armonico")},
    {"/", QT_TRANSLATE_NOOP("UserText", "Suona intervallo melodico")},
    {"/ :", QT_TRANSLATE_NOOP("UserText", "Suona intervallo melodico e armonico")},
}};

/// Consonances stand upright and bold, dissonances slanted, for those who do not see the colours.
void styleName(QLabel& label, bool consonant) {
    QFont font = label.font();
    font.setBold(consonant);
    font.setItalic(!consonant);
    label.setFont(font);
    QPalette palette = label.palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(consonant ? ear_colours::kConsonant
                                                                 : ear_colours::kDissonant));
    palette.setColor(
        QPalette::WindowText,
        QColor::fromRgb(consonant ? ear_colours::kConsonantText : ear_colours::kDissonantText));
    label.setPalette(palette);
    label.setAutoFillBackground(true);
    label.setAlignment(Qt::AlignCenter);
    label.setContentsMargins(6, 4, 6, 4);
    label.setAccessibleDescription(consonant ? UserText::tr("consonante")
                                             : UserText::tr("dissonante"));
}

}  // namespace

IntervalPanel::IntervalPanel(IntervalExercise& exercise, QWidget* parent)
    : ExercisePanel(exercise, {"mnuRint", UserText::tr("Riconoscimento intervallo")}, parent),
      ui_(std::make_unique<Ui::IntervalPanel>()),
      interval_(exercise) {
    ui_->setupUi(this);
    setButtons(*ui_->CmdIntStart, *ui_->cmdRiascoltaIntervallo);
    for (int i = 0; i < kIntervals; ++i)
        ui_->chart->setColumnStretch(columnOf(i), 1);
    buildNames();
    buildButtons();
    styleName(*ui_->consonances, true);
    styleName(*ui_->dissonances, false);
    styleModeButtons(*ui_->Label7, *ui_->lblModo);
    QStringList modes;
    for (const ModeText& mode : kModes)
        modes << UserText::tr(mode.toolTip);
    panel_text::reserveWidest(*ui_->lblSpiegaModo, modes);
    connectControls();
    showMode();
    showAvailability();
}

IntervalPanel::~IntervalPanel() = default;

void IntervalPanel::buildNames() {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        const Name& name = kNames[i];
        auto* label = new QLabel(intervals::nameOf(name.interval), this);
        label->setObjectName(QStringLiteral("Label4_%1").arg(i));
        styleName(*label, intervals::soundsConsonant(name.interval));
        ui_->chart->addWidget(label, name.row == Row::Above ? kAboveRow : kBelowRow,
                              columnOf(name.interval.semitones));
    }
}

void IntervalPanel::buildButtons() {
    for (int i = 0; i < kIntervals; ++i) {
        auto* button = new ColourButton(this);
        button->setObjectName(QStringLiteral("LblSemi_%1").arg(i));
        button->setText(QString::number(i));
        button->setAccessibleName(intervals::sizeInWords(i));
        button->setLines(kSemitonesLines);
        button->setColours(isConsonant(i) ? ear_colours::kConsonant : ear_colours::kDissonantButton,
                           ear_colours::kConsonantText);
        appearance::enlargeText(*button, kSemitonesTextScale);
        ui_->chart->addWidget(button, kButtonRow, columnOf(i));
        semitones_[static_cast<std::size_t>(i)] = button;
    }
    for (int i = 0; i < kIntervals; ++i) {
        auto* marker = new ColourButton(this);
        marker->setObjectName(QStringLiteral("Il_%1").arg(i));
        marker->setLines(kMarkerLines);
        ui_->chart->addWidget(marker, kMarkerRow, columnOf(i));
        markers_[static_cast<std::size_t>(i)] = marker;
    }
}

QWidget* IntervalPanel::answerControl(int answer) const {
    return semitones_[static_cast<std::size_t>(answer)];
}

void IntervalPanel::connectControls() {
    for (QToolButton* label : {ui_->Label7, ui_->lblModo})
        connect(label, &QToolButton::clicked, this, &IntervalPanel::lblModo_Click);
    for (int i = 0; i < kIntervals; ++i) {
        const auto place = static_cast<std::size_t>(i);
        connect(semitones_[place], &ColourButton::clicked, this,
                [this, i] { interval_.semitonesClicked(i); });
        connect(markers_[place], &ColourButton::clicked, this, [this, i] { Il_Click(i); });
        connect(new DoubleClick(*markers_[place]), &DoubleClick::doubleClicked, this,
                [this, i] { Il_DblClick(i); });
    }
}

void IntervalPanel::Il_Click(int semitones) {
    interval_.toggleAvailable(semitones);
    showAvailability();
}

void IntervalPanel::Il_DblClick(int semitones) {
    if (semitones != 0)
        return;
    interval_.toggleAll();
    showAvailability();
}

void IntervalPanel::lblModo_Click() {
    interval_.stepMode();
    showMode();
}

void IntervalPanel::showMode() {
    const ModeText& text = kModes[static_cast<std::size_t>(interval_.mode())];
    ui_->lblModo->setText(QString::fromUtf8(text.caption));
    ui_->lblModo->setToolTip(UserText::tr(text.toolTip));
    ui_->lblSpiegaModo->setText(ui_->lblModo->toolTip());
    ui_->lblModo->setAccessibleName(UserText::tr("Modo: %1").arg(ui_->lblModo->toolTip()));
}

void IntervalPanel::showAvailability() {
    for (int i = 0; i < kIntervals; ++i) {
        const bool available = interval_.available(i);
        ColourButton& marker = *markers_[static_cast<std::size_t>(i)];
        marker.showAvailable(available);
        marker.setToolTip(available ? UserText::tr("Intervallo disponibile")
                                    : UserText::tr("Intervallo escluso"));
        marker.setAccessibleName(intervals::semitonesInWords(i) + QStringLiteral(": ") +
                                 marker.toolTip());
    }
}
