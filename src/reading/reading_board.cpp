#include "reading/reading_board.h"

#include "ui_reading_board.h"
#include "widgets/appearance.h"

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
    : QWidget(parent), ui_(std::make_unique<Ui::ReadingBoard>()), buttons_{} {
    ui_->setupUi(this);
    buttons_ = {ui_->pdo, ui_->pre, ui_->pmi, ui_->pfa, ui_->psol, ui_->pla, ui_->psi};
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
