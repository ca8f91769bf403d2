#include "eartraining/score_panel.h"

#include "platform/user_text.h"
#include "ui_score_panel.h"
#include "widgets/appearance.h"
#include "widgets/double_click.h"
#include "widgets/label_button.h"
#include "widgets/panel_text.h"

namespace {

constexpr double kCounterTextScale = 1.6;

void setBackground(QWidget& counter, const std::optional<ear_colours::Rgb>& colour) {
    if (!colour)
        return;
    QPalette palette = counter.palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(*colour));
    palette.setColor(QPalette::WindowText, Qt::black);
    counter.setPalette(palette);
}

}  // namespace

ScorePanel::ScorePanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::ScorePanel>()) {
    ui_->setupUi(this);
    for (QWidget* number :
         std::initializer_list<QWidget*>{ui_->txtResatte, ui_->txtRerrate, ui_->lblPerc})
        appearance::enlargeText(*number, kCounterTextScale);
    for (QLabel* counter : {ui_->txtResatte, ui_->txtRerrate})
        counter->setBackgroundRole(QPalette::Base);
    ui_->lblPerc->setAccessibleDescription(
        UserText::tr("Sposta di un'ottava la tastiera del computer"));
    makeLabelButton(*ui_->lblPerc, palette().color(QPalette::WindowText));
    clickByDoubleClick(*ui_->lblPerc);
    connect(ui_->lblPerc, &QToolButton::clicked, this, &ScorePanel::percentageDoubleClicked);
    panel_text::reserve(*ui_->lblPerc, QStringLiteral("100.00%"));
    ui_->lblOk->setMark(Mark::Tick, ear_colours::kRightIndicator);
    ui_->lblKo->setMark(Mark::Cross, ear_colours::kWrongIndicator);
    ui_->lblOk->hide();
    ui_->lblKo->hide();
}

ScorePanel::~ScorePanel() = default;

void ScorePanel::show(const Score& score) {
    ui_->txtResatte->setText(QString::number(score.right()));
    ui_->txtRerrate->setText(QString::number(score.wrong()));
    ui_->lblPerc->setText(score.percentage());
    ui_->lblPerc->setAccessibleName(
        UserText::tr("Percentuale risposte esatte: %1").arg(score.percentage()));
    for (QLabel* counter : {ui_->txtResatte, ui_->txtRerrate}) {
        const bool right = counter == ui_->txtResatte;
        const auto& colour = right ? score.rightColour() : score.wrongColour();
        if (colour)
            counter->setBackgroundRole(QPalette::Window);
        setBackground(*counter, colour);
    }
    ui_->lblOk->setVisible(score.lastVerdict() == Verdict::Right);
    ui_->lblKo->setVisible(score.lastVerdict() == Verdict::Wrong);
}
