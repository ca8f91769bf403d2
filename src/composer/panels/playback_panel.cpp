#include "composer/panels/playback_panel.h"

#include "composer/melody/composition.h"
#include "platform/user_text.h"
#include "ui_playback_panel.h"
#include "widgets/action_icon.h"
#include "widgets/appearance.h"
#include "widgets/panel_text.h"

#include <QSignalBlocker>

namespace {

constexpr double kTempoTextScale = 1.5;
constexpr int kPlayFrame = 52;

}  // namespace

PlaybackPanel::PlaybackPanel(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PlaybackPanel>()) {
    ui_->setupUi(this);
    appearance::enlargeText(*ui_->cmdPlay, 1);
    setActionIcon(*ui_->cmdPlay, ActionIcon::Play);
    panel_text::reserve(*ui_->cmdPlay, UserText::tr("Stop"), kPlayFrame);
    panel_text::reserve(*ui_->lblNe, panel_text::widestEntryNumber());
    panel_text::reserve(*ui_->lblPnn, panel_text::widestNoteName());
    appearance::enlargeText(*ui_->lblTempo, kTempoTextScale);
    ui_->lblTempo->describe(
        [this] { return UserText::tr("%1 semiminime al minuto").arg(ui_->Slider1->value()); },
        [] { return UserText::tr("Velocità di esecuzione"); });
    ui_->lblTempo->describeLine(
        UserText::tr("Semiminime al minuto"),
        static_cast<int>(QString::number(Composition::kHighestTempo).size()));
    ui_->lblTempo->turnBar(*ui_->Slider1);
    ui_->Slider1->setRange(Composition::kLowestTempo, Composition::kHighestTempo);
    showTempo(Composition::kDefaultTempo);
}

PlaybackPanel::~PlaybackPanel() = default;

void PlaybackPanel::showPlaying(bool playing) {
    setActionIcon(*ui_->cmdPlay, playing ? ActionIcon::Stop : ActionIcon::Play);
    ui_->cmdPlay->setText(playing ? UserText::tr("Stop") : UserText::tr("Play"));
}

void PlaybackPanel::showTempo(int tempo) {
    const QSignalBlocker silent(ui_->Slider1);
    ui_->Slider1->setValue(tempo);
    ui_->lblTempo->setText(QString::number(tempo));
}
