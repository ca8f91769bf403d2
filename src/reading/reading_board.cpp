#include "reading/reading_board.h"

#include "reading/answer_keys.h"
#include "reading/reading_staff.h"
#include "ui_reading_board.h"
#include "widgets/appearance.h"
#include "widgets/verdict_badge.h"

#include <QLabel>
#include <QPushButton>

namespace {

constexpr double kButtonTextScale = 1.4;
constexpr double kTint = 0.16;

/// The answer buttons carry a little of the accent colour.
void tint(QPushButton& button) {
    QPalette palette = button.palette();
    palette.setColor(QPalette::Button, appearance::mixed(palette.color(QPalette::Highlight),
                                                         palette.color(QPalette::Button), kTint));
    button.setPalette(palette);
}

}  // namespace

ReadingBoard::ReadingBoard(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::ReadingBoard>()),
      buttons_{},
      keys_{},
      verdict_(new VerdictBadge(this)) {
    ui_->setupUi(this);
    buttons_ = {ui_->pdo, ui_->pre, ui_->pmi, ui_->pfa, ui_->psol, ui_->pla, ui_->psi};
    keys_ = {ui_->key_pdo,  ui_->key_pre, ui_->key_pmi, ui_->key_pfa,
             ui_->key_psol, ui_->key_pla, ui_->key_psi};
    showKeys(ReadingMode::Normale);
    for (QPushButton* button : buttons_) {
        appearance::enlargeText(*button, kButtonTextScale);
        tint(*button);
    }
}

ReadingBoard::~ReadingBoard() = default;

ReadingStaff& ReadingBoard::staff() {
    return *ui_->staff;
}

void ReadingBoard::nameAnswers(pitch::AnswerNames style) {
    for (int degree = 0; degree < pitch::kDegrees; ++degree)
        buttons_[static_cast<std::size_t>(degree)]->setText(pitch::answerName(degree, style));
}

void ReadingBoard::enableAnswers(bool on) {
    for (QPushButton* button : buttons_)
        button->setEnabled(on);
}

void ReadingBoard::showKeys(ReadingMode mode) {
    for (int degree = 0; degree < pitch::kDegrees; ++degree)
        keys_[static_cast<std::size_t>(degree)]->setText(answer_keys::inWords(degree, mode));
    for (QLabel* label : {ui_->lblAuto1, ui_->lblAuto2})
        label->setVisible(mode == ReadingMode::Automatico);
}

void ReadingBoard::showVerdict(const std::optional<ReadingVerdict::Shown>& shown) {
    staff().showVerdict(shown);
    if (shown && shown->degree)
        verdict_->showOver(*buttons_[static_cast<std::size_t>(*shown->degree)], shown->verdict);
    else
        verdict_->hide();
}
