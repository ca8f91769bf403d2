#include "reading/reading_controls.h"

#include "platform/user_text.h"
#include "reading/difficulty.h"
#include "ui_reading_controls.h"
#include "widgets/action_icon.h"
#include "widgets/appearance.h"
#include "widgets/panel_text.h"

namespace {

constexpr double kCounterTextScale = 2.2;
constexpr double kStartTextScale = 1.2;

QString speedText(int notesPerMinute) {
    return UserText::tr("Velocità: %1").arg(notesPerMinute);
}

}  // namespace

ReadingControls::ReadingControls(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ReadingControls>()) {
    ui_->setupUi(this);
    setActionIcon(*ui_->Start, ActionIcon::Play);
    for (const difficulty::Item& item : difficulty::kItems)
        ui_->difficolt->addItem(UserText::tr(item.text));
    ui_->difficolt->setMaxVisibleItems(static_cast<int>(difficulty::kItems.size()));
    for (QWidget* counter : {ui_->conta, ui_->er})
        appearance::enlargeText(*counter, kCounterTextScale, QFont::Normal);
    appearance::enlargeText(*ui_->Start, kStartTextScale, QFont::Normal);
    panel_text::reserveWidest(*ui_->lblVelocita, {speedText(ui_->Slider1->maximum())});
}

ReadingControls::~ReadingControls() = default;

void ReadingControls::showSpeed(int notesPerMinute) {
    ui_->lblVelocita->setText(speedText(notesPerMinute));
}

void ReadingControls::showSpeedControls(bool on) {
    ui_->speed->setVisible(on);
}

void ReadingControls::showStatistics(const ReadingStatistics& statistics) {
    const bool normalMode = statistics.mode == ReadingMode::Normale;
    ui_->Lresatte->setText(statistics.rightAnswers());
    ui_->Lrerrate->setText(statistics.wrongAnswers());
    ui_->Ridate->setText(statistics.answersGiven());
    ui_->Lnmostrate->setText(statistics.notesShown());
    ui_->Lpercento->setText(statistics.percentage());
    ui_->Tempoimp->setText(statistics.timeTaken());
    for (QWidget* label : std::initializer_list<QWidget*>{ui_->Lresatte, ui_->Lrerrate,
                                                          ui_->Lpercento, ui_->Tempoimp})
        label->show();
    ui_->Ridate->setVisible(normalMode);
    ui_->Lnmostrate->setVisible(!normalMode);
    ui_->statistiche->show();
}

void ReadingControls::hideStatistics() {
    for (QWidget* widget :
         std::initializer_list<QWidget*>{ui_->Lresatte, ui_->Lrerrate, ui_->Ridate, ui_->Lnmostrate,
                                         ui_->Lpercento, ui_->Tempoimp, ui_->statistiche})
        widget->hide();
}
