#include "reading/reading_board.h"

#include "ui_reading_board.h"

#include <QLabel>
#include <QPushButton>

namespace {

constexpr double kButtonTextScale = 1.4;
constexpr int kTintPercent = 16;

/// The answer buttons carry a little of the accent colour.
void tint(QPushButton& button) {
    QPalette palette = button.palette();
    const QColor plain = palette.color(QPalette::Button);
    const QColor accent = palette.color(QPalette::Highlight);
    const auto mix = [](int a, int b) {
        return (a * (100 - kTintPercent) + b * kTintPercent) / 100;
    };
    palette.setColor(QPalette::Button,
                     QColor(mix(plain.red(), accent.red()), mix(plain.green(), accent.green()),
                            mix(plain.blue(), accent.blue())));
    button.setPalette(palette);
}

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
