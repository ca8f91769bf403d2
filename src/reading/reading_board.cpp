#include "reading/reading_board.h"

#include "ui_reading_board.h"

#include <QLabel>
#include <QPushButton>

namespace {

constexpr double kButtonTextScale = 1.4;

}  // namespace

ReadingBoard::ReadingBoard(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::ReadingBoard>()), buttons_{} {
    ui_->setupUi(this);
    buttons_ = {ui_->pdo, ui_->pre, ui_->pmi, ui_->pfa, ui_->psol, ui_->pla, ui_->psi};
    for (QPushButton* button : buttons_) {
        QFont font = button->font();
        font.setPointSizeF(font.pointSizeF() * kButtonTextScale);
        font.setBold(true);
        button->setFont(font);
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
